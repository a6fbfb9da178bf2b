// What the contract of XML documents cannot reach: libxml2 takes its memory past C++.
#include "xml/document.h"

#include <doctest.h>

#include <libxml/xmlmemory.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

using vellumo::xml::Document;

namespace
{

std::size_t allocationsLeft = 0;
bool ranOut = false;

bool IsThere()
{
    ranOut = ranOut || allocationsLeft == 0;
    return allocationsLeft != 0 && allocationsLeft-- != 0;
}

void* Allocate(std::size_t size)
{
    return IsThere() ? std::malloc(size) : nullptr;
}
void* Reallocate(void* memory, std::size_t size)
{
    return IsThere() ? std::realloc(memory, size) : nullptr;
}
char* Duplicate(const char* text)
{
    return IsThere() ? ::strdup(text) : nullptr;
}

} // namespace

TEST_SUITE("platform/native")
{
    TEST_CASE("a text for which libxml2 finds no memory is not said to be no XML")
    {
        const std::string text = "<?xml version='1.0'?><m:a xmlns:m='urn:u' b='&amp;" + std::string(3000, 'x') +
                                 "'><!-- z --><![CDATA[" + std::string(3000, 'y') + "]]><m:c d='1'/>e</m:a>";
        REQUIRE(Document::FromText(text));
        std::size_t allocations = 0;
        do
        {
            CAPTURE(allocations);
            allocationsLeft = allocations++;
            ranOut = false;
            xmlMemSetup(std::free, Allocate, Reallocate, Duplicate);
            bool isTold = false;
            try
            {
                isTold = Document::FromText(text).has_value();
            }
            catch (const std::bad_alloc&)
            {
                isTold = true;
            }
            xmlMemSetup(std::free, std::malloc, std::realloc, ::strdup);
            CHECK(isTold);
        } while (ranOut);
        CHECK(allocations > 10);
    }
}
