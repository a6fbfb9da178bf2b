#include "simulator/siss/replies.h"

#include "host/fault.h"
#include "simulator/siss/xml_text.h"

#include <algorithm>
#include <array>

namespace vellumo::siss
{

std::string Wrapped(const std::string& name, const std::string& content)
{
    return '<' + name + '>' + content + "</" + name + '>';
}

std::string Leaf(const std::string& name, const std::string& text)
{
    return Wrapped(name, Escape(text));
}

namespace
{

// Where a service's reply has its outcome, and what wraps the data in it.
struct Shape
{
    std::string_view service;
    std::string_view outcome;
    std::string_view wrapperBegin;
    std::string_view wrapperEnd;
};

constexpr std::string_view identifiedBegin = "<rispostaSingola><rispostaCittadinoIdentificato>"
                                             "<esitoServizio>OK</esitoServizio>";
constexpr std::string_view identifiedEnd = "</rispostaCittadinoIdentificato></rispostaSingola>";

constexpr std::string_view registeredBegin = "<rispostaRicettaRegistrata><esitoServizio>OK</esitoServizio>";
constexpr std::string_view registeredEnd = "</rispostaRicettaRegistrata>";

constexpr std::array<Shape, 6> shapes = {{
    {"m:ICCE.identificaCittadinoGUI", "esitoIdentifica", identifiedBegin, identifiedEnd},
    {"m:ICCE.identificaCittadinoEsteso", "esitoIdentifica", identifiedBegin, identifiedEnd},
    {"m:ICCE.identificaCittadino", "esitoIdentifica", identifiedBegin, identifiedEnd},
    {"m:GSSC.registraPrescrizione", "param", registeredBegin, registeredEnd},
    {"m:ICCE.inserisciDatiContatto", "esitoInserisciContatto", "", ""},
    {"m:ICCE.modificaDatiContatto", "esitoModificaContatto", "", ""},
}};

Shape ShapeOf(const std::string& service)
{
    const auto* const found =
        std::find_if(shapes.begin(), shapes.end(), [&](const Shape& shape) { return shape.service == service; });
    return found == shapes.end() ? Shape{service, "param", "", ""} : *found;
}

// `kind` is "Eccezione" or "Warning", the word that the names of the children end in or hold.
std::string List(const std::string& listName, const std::string& entryName, const std::string& kind,
                 const std::vector<Detail>& details)
{
    if (details.empty())
    {
        return {};
    }
    std::string entries;
    for (const auto& detail : details)
    {
        entries += Wrapped(entryName, Leaf("codice" + kind, detail.code) + Leaf("desc" + kind, detail.message) +
                                          Leaf("nomeCampo", detail.field) + Leaf("valoreCampo", detail.value) +
                                          Leaf("codice" + kind + "Campo", detail.fieldCode) +
                                          Leaf("desc" + kind + "Campo", detail.fieldMessage));
    }
    return Wrapped(listName, entries);
}

std::string Lists(const std::vector<Detail>& exceptions, const std::vector<Detail>& warnings)
{
    return List("listaEccezioni", "eccezione", "Eccezione", exceptions) +
           List("listaWarning", "warning", "Warning", warnings);
}

std::string Repeated(std::string_view text, std::size_t times)
{
    std::string out;
    out.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i)
    {
        out += text;
    }
    return out;
}

// Writes the reply to one service in each of the ways in which it may come.
class Writer
{
public:
    Writer(const std::string& service, const Behaviour& behaviour, const std::string& data)
        : m_shape(ShapeOf(service))
        , m_response(service + "Response")
        , m_behaviour(behaviour)
        , m_data(data)
    {
    }

    std::string operator()(std::monostate) const { return Proper(m_data); }
    std::string operator()(const DataText& data) const
    {
        return Proper("<datiRisposta>" + Escape(data.text) + "</datiRisposta>");
    }
    std::string operator()(const DataXml& data) const { return Proper(data.xml); }
    std::string operator()(const Verbatim& verbatim) const { return verbatim.text; }
    std::string operator()(const LostReply&) const { return {}; }
    std::string operator()(const Raise& raise) const { throw host::Fault(raise.message); }
    std::string operator()(const NoOutcome&) const { return Response("<altro/>"); }

    std::string operator()(const Refusal& refusal) const
    {
        return Outcome(NegativeOutcome(refusal) + (refusal.withData ? m_data : ""));
    }

    std::string operator()(const SoapFault& fault) const
    {
        const auto detail = fault.detailCode.empty() ? std::string()
                                                     : "<detail><faultDetail>" + Leaf("errorCode", fault.detailCode) +
                                                           "</faultDetail></detail>";
        return Envelope('<' + fault.prefix + ":Fault>" + Leaf("faultcode", fault.code) +
                            Leaf("faultstring", fault.message) + detail + "</" + fault.prefix + ":Fault>",
                        fault.prefix);
    }

    std::string operator()(const Hostile& hostile) const
    {
        switch (hostile.kind)
        {
        case Hostile::Kind::Huge:
            return Proper("<datiRisposta>" + std::string(hostile.size, 'x') + "</datiRisposta>");
        case Hostile::Kind::Deep:
            return Proper(Repeated("<a>", hostile.size) + Repeated("</a>", hostile.size));
        case Hostile::Kind::Doctype:
            return WithDoctype(
                "<!ENTITY a \"aaaaaaaaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;\"><!ENTITY c \"&b;&b;&b;&b;\">", "&c;");
        case Hostile::Kind::External:
            return WithDoctype("<!ENTITY c SYSTEM \"file:///etc/hostname\">", "&c;");
        }
        return {};
    }

private:
    [[nodiscard]] std::string Response(const std::string& content) const
    {
        return Envelope('<' + m_response + '>' + content + "</" + m_response + '>');
    }
    [[nodiscard]] std::string Outcome(const std::string& content) const
    {
        const std::string outcome(m_shape.outcome);
        return Response('<' + outcome + '>' + content + "</" + outcome + '>');
    }
    [[nodiscard]] std::string Proper(const std::string& data) const
    {
        return Outcome(std::string(m_shape.wrapperBegin) + data + Lists(m_behaviour.exceptions, m_behaviour.warnings) +
                       std::string(m_shape.wrapperEnd));
    }
    [[nodiscard]] std::string WithDoctype(const std::string& declarations, const std::string& text) const
    {
        auto reply = Proper("<datiRisposta>" + text + "</datiRisposta>");
        reply.insert(reply.find("?>") + 2, "<!DOCTYPE a [" + declarations + "]>");
        return reply;
    }

    Shape m_shape;
    std::string m_response;
    const Behaviour& m_behaviour;
    const std::string& m_data;
};

} // namespace

std::string NegativeOutcome(const Refusal& refusal)
{
    return Wrapped("esitoNegativo", Leaf("codiceErrore", refusal.code) + Leaf("descErrore", refusal.message) +
                                        Lists(refusal.exceptions, refusal.warnings));
}

std::string WriteReply(const std::string& service, const Behaviour& behaviour, const std::string& data)
{
    return std::visit(Writer(service, behaviour, data), behaviour.reply);
}

} // namespace vellumo::siss
