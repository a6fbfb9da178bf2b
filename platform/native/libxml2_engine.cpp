// Reads XML through libxml2's SAX interface. libxml2 refuses whatever is not well-formed; a prefix without a
// declaration is only a namespace matter to it and is accepted, as names are matched by their literal spelling.
#include "xml/engine.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>

#include <climits>
#include <exception>
#include <memory>

namespace vellumo::xml
{
namespace
{

struct Reading
{
    Builder& builder;
    xmlParserCtxtPtr parser = nullptr;
    std::exception_ptr failure;

    // libxml2 is C: an exception must not cross it.
    template <class Report>
    void Call(Report&& report) noexcept
    {
        if (failure == nullptr)
        {
            try
            {
                report();
            }
            catch (...)
            {
                failure = std::current_exception();
                xmlStopParser(parser);
            }
        }
    }
};

std::string_view View(const xmlChar* text)
{
    return text == nullptr ? "" : reinterpret_cast<const char*>(text);
}

Reading& From(void* context)
{
    return *static_cast<Reading*>(static_cast<xmlParserCtxtPtr>(context)->_private);
}

void StartElement(void* context, const xmlChar* name, const xmlChar** attributes)
{
    Reading& reading = From(context);
    reading.Call(
        [&]
        {
            reading.builder.StartElement(View(name));
            for (const xmlChar** entry = attributes; entry != nullptr && *entry != nullptr; entry += 2)
            {
                reading.builder.Attribute(View(entry[0]), View(entry[1]));
            }
        });
}

void EndElement(void* context, const xmlChar*)
{
    Reading& reading = From(context);
    reading.Call([&] { reading.builder.EndElement(); });
}

void Characters(void* context, const xmlChar* text, int length)
{
    Reading& reading = From(context);
    reading.Call(
        [&] {
            reading.builder.Text({reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)});
        });
}

void Silent(void*, const char*, ...) {}
void SilentStructured(void*, xmlErrorPtr) {}

xmlSAXHandler MakeHandler()
{
    xmlSAXHandler handler{};
    handler.startElement = StartElement; // the SAX1 form: names as written, declarations as attributes
    handler.endElement = EndElement;
    handler.characters = Characters;
    handler.ignorableWhitespace = Characters;
    handler.cdataBlock = Characters;
    handler.warning = Silent;
    handler.error = Silent;
    handler.fatalError = Silent;
    handler.serror = SilentStructured;
    handler.initialized = 1;
    return handler;
}

} // namespace

bool Read(std::string_view text, Builder& builder)
{
    if (text.size() > INT_MAX)
    {
        return false;
    }
    xmlSAXHandler handler = MakeHandler();
    const std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> parser(
        xmlCreateMemoryParserCtxt(text.data(), static_cast<int>(text.size())), &xmlFreeParserCtxt);
    if (parser == nullptr)
    {
        return false;
    }
    Reading reading{builder, parser.get(), nullptr};
    const auto original = parser->sax;
    parser->sax = &handler;
    parser->_private = &reading;
    // HUGE lifts libxml2's own limits on one text; size and depth have been bounded by then. NOENT because otherwise an
    // ampersand in an attribute arrives escaped; there are no declared entities to replace.
    xmlCtxtUseOptions(parser.get(),
                      XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_IGNORE_ENC | XML_PARSE_HUGE | XML_PARSE_SAX1);
    xmlSwitchEncoding(parser.get(), XML_CHAR_ENCODING_UTF8);
    xmlParseDocument(parser.get());
    const bool wellFormed = parser->wellFormed == 1;
    parser->sax = original;
    if (reading.failure)
    {
        std::rethrow_exception(reading.failure);
    }
    return wellFormed;
}

} // namespace vellumo::xml
