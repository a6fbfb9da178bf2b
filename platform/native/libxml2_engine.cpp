// Reads XML through libxml2's SAX interface. libxml2 refuses whatever is not well-formed, and says so in the same way
// when it finds no memory; which of the two it was is told only by its error messages.
#include "xml/engine.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>

#include <climits>
#include <exception>
#include <memory>
#include <new>

namespace vellumo::xml
{
namespace
{

struct Reading
{
    Builder& builder;
    xmlParserCtxtPtr parser = nullptr;
    std::exception_ptr failure{};

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

// Takes what libxml2 has to say while it lives. Without it, it would write to the host's standard error.
class Messages
{
public:
    explicit Messages(bool& lacksMemory)
        : m_oldHandler(xmlStructuredError)
        , m_oldContext(xmlStructuredErrorContext)
    {
        xmlSetStructuredErrorFunc(&lacksMemory, Take);
    }
    ~Messages() { xmlSetStructuredErrorFunc(m_oldContext, m_oldHandler); }
    Messages(const Messages&) = delete;
    Messages& operator=(const Messages&) = delete;

private:
    static void Take(void* lacksMemory, xmlErrorPtr error)
    {
        if (error != nullptr && error->code == XML_ERR_NO_MEMORY)
        {
            *static_cast<bool*>(lacksMemory) = true;
        }
    }

    xmlStructuredErrorFunc m_oldHandler;
    void* m_oldContext;
};

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
    handler.initialized = 1;
    return handler;
}

} // namespace

bool Read(std::string_view text, Builder& builder)
{
    if (text.empty() || text.size() > INT_MAX)
    {
        return false;
    }
    xmlSAXHandler handler = MakeHandler();
    bool lacksMemory = false;
    const Messages messages(lacksMemory);
    const std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> parser(
        xmlCreateMemoryParserCtxt(text.data(), static_cast<int>(text.size())), &xmlFreeParserCtxt);
    if (parser == nullptr)
    {
        throw std::bad_alloc();
    }
    Reading reading{builder, parser.get()};
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
    if (lacksMemory)
    {
        throw std::bad_alloc();
    }
    return wellFormed;
}

} // namespace vellumo::xml
