#include "simulator/siss/messages.h"

#include "simulator/siss/xml_text.h"

namespace vellumo::siss
{

std::string OutcomeOf(const std::string& reply)
{
    const auto text = [&](const std::string& element)
    {
        const auto begin = reply.find('<' + element + '>');
        const auto end = reply.find("</" + element + '>');
        return begin == std::string::npos || end == std::string::npos
                   ? std::string()
                   : reply.substr(begin + element.size() + 2, end - begin - element.size() - 2);
    };
    if (const auto code = text("codiceErrore"); !code.empty())
    {
        return "esito negativo " + code + ", " + text("descErrore");
    }
    if (const auto outcome = text("esitoServizio"); !outcome.empty())
    {
        return "esito " + outcome + ", " + std::to_string(reply.size()) + " byte";
    }
    if (const auto protocol = text("protocolloINPS"); !protocol.empty())
    {
        return "protocollo INPS " + protocol + ", " + std::to_string(reply.size()) + " byte";
    }
    return reply.find("Response>") != std::string::npos ? std::to_string(reply.size()) + " byte"
                                                        : '"' + reply.substr(0, 70) + '"';
}

std::string ServiceOf(const std::string& request)
{
    const auto envelope = ReadXml(request);
    const auto* const body = envelope.Find("SOAP-ENV:Body");
    return body == nullptr || body->children.empty() ? "?" : body->children.front().name;
}

} // namespace vellumo::siss
