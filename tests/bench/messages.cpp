// Reading a reply and filling a request; against the XML engine alone reading the same text into a tree, and writing
// the same one.
#include "tests/bench/measure.h"
#include "tests/bench/subjects.h"
#include "xml/document.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <functional>
#include <memory>
#include <string>

namespace vellumo::bench
{
namespace
{

constexpr int times = 2000;

// A reply as large as a citizen with ten exemptions makes it.
std::string MakeReply()
{
    std::string reply = R"(<?xml version="1.0" encoding="UTF-8"?><SOAP-ENV:Envelope )"
                        R"(xmlns:SOAP-ENV="http://schemas.xmlsoap.org/soap/envelope/"><SOAP-ENV:Body>)"
                        "<risposta><esito><codiceRitorno>0</codiceRitorno></esito><datiRisposta><datiCittadino>";
    for (int i = 0; i < 40; ++i)
    {
        const auto name = "elementoCittadino" + std::to_string(i);
        reply.append("<").append(name).append(">Via Libertà ").append(std::to_string(i));
        reply.append("</").append(name).append(">\n");
    }
    reply += "</datiCittadino><esenzioniGodute>";
    for (int i = 0; i < 10; ++i)
    {
        reply += "<esenzione><codiceEsenzione>E0" + std::to_string(i) +
                 "</codiceEsenzione><decorrenzaEsenzione>20140101</decorrenzaEsenzione></esenzione>\n";
    }
    return reply + "</esenzioniGodute></datiRisposta></risposta></SOAP-ENV:Body></SOAP-ENV:Envelope>";
}

using BareDocument = std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)>;

BareDocument ReadBare(const std::string& text)
{
    return {xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, "UTF-8", XML_PARSE_NONET), &xmlFreeDoc};
}

xmlNode* FindBare(xmlNode* node, const char* name)
{
    for (; node != nullptr; node = node->next)
    {
        if (node->type == XML_ELEMENT_NODE && xmlStrEqual(node->name, reinterpret_cast<const xmlChar*>(name)) != 0)
        {
            return node;
        }
        if (xmlNode* const below = FindBare(node->children, name))
        {
            return below;
        }
    }
    return nullptr;
}

std::size_t FillBare(const std::string& text)
{
    const auto document = ReadBare(text);
    xmlNodeSetContent(FindBare(xmlDocGetRootElement(document.get()), "elementoCittadino20"),
                      reinterpret_cast<const xmlChar*>("Rossi"));
    xmlChar* bytes = nullptr;
    int size = 0;
    xmlDocDumpMemory(document.get(), &bytes, &size);
    xmlFree(bytes);
    return static_cast<std::size_t>(size);
}

std::size_t FillOurs(const std::string& text)
{
    const auto document = xml::Document::FromText(text).value();
    document.Select("/SOAP-ENV:Envelope/SOAP-ENV:Body/risposta/datiRisposta/datiCittadino/elementoCittadino20")
        .SetText("Rossi");
    return document.Xml().size();
}

void Repeat(const std::function<void()>& work)
{
    for (int i = 0; i < times; ++i)
    {
        work();
    }
}

} // namespace

void MeasureMessages()
{
    const auto reply = MakeReply();
    // The library also looks for hostile texts and builds a tree of its own.
    const auto reading = Compare(
        "two thousand replies read", "libxml2 reading them into its own tree", 15,
        [&] { Repeat([&] { Use(xml::Document::FromText(reply).value().Root().Name().size()); }); },
        [&] { Repeat([&] { Use(ReadBare(reply) ? 1U : 0U); }); });
    const auto filling = Compare(
        "two thousand requests filled and written", "libxml2 doing the same", 15,
        [&] { Repeat([&] { Use(FillOurs(reply)); }); }, [&] { Repeat([&] { Use(FillBare(reply)); }); });
    Tell(reading);
    Tell(filling);
}

} // namespace vellumo::bench
