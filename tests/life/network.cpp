#include "tests/life/network.h"

#include "host/fault.h"

#include <algorithm>

namespace vellumo::life
{
namespace
{

std::string Element(std::string_view name, std::string_view content)
{
    std::string text;
    text.append("<").append(name).append(">").append(content).append("</").append(name).append(">");
    return text;
}

std::string Envelope(std::string_view service, std::string_view content)
{
    return R"(<?xml version="1.0" encoding="UTF-8"?><SOAP-ENV:Envelope xmlns:SOAP-ENV="e" xmlns:m="m"><SOAP-ENV:Body>)" +
           Element("m:GSSC." + std::string(service) + "Response", content) + "</SOAP-ENV:Body></SOAP-ENV:Envelope>";
}

std::string Refusal(std::string_view code)
{
    return Element("esitoNegativo", Element("codiceErrore", code) + Element("descErrore", "Rifiutata"));
}

std::string Entry(std::string_view list, std::string_view entry, std::string_view kind)
{
    return Element(list, Element(entry, Element("codice" + std::string(kind), "RIC0001") +
                                            Element("desc" + std::string(kind), "Controllare")));
}

bool HasBit(unsigned mask, std::size_t bit)
{
    return (mask >> bit & 1U) != 0;
}

// SISS knows the prescription, whatever the reply says.
bool IsTaken(Fate fate)
{
    return fate != Fate::LostBefore && fate != Fate::Refused && fate != Fate::RefusedWithCode &&
           fate != Fate::RefusedByList;
}

} // namespace

void Network::Expect(const Round& round)
{
    m_round = &round;
    m_expected.insert(m_expected.end(), round.sendings.begin(), round.sendings.end());
    m_hasResults = false;
}

void Network::Receive(std::string_view request)
{
    m_unreached = m_outside.givenCount;
    m_raises = false;
    if (request.find("m:GSSC.registraPrescrizione") != std::string_view::npos)
    {
        m_reply = Register(request);
    }
    else if (request.find("m:GSSC.fineFasePrescrittiva") != std::string_view::npos)
    {
        m_reply = End();
    }
    else
    {
        m_reply = Envelope("inizioFasePrescrittiva", Element("param", Element("datiRisposta", "")));
        m_phase = m_all.size();
    }
}

std::string Network::Deliver()
{
    if (m_raises)
    {
        throw host::Fault("Il client non risponde a 'Verdi'.", 5, "Winbridge");
    }
    for (std::size_t i = m_unreached; i < m_outside.givenCount; ++i)
    {
        // A code that is not in the reply was lost with it.
        m_outside.given.at(i).reached = m_reply.find(m_outside.given.at(i).code.View()) != std::string::npos;
    }
    return m_reply;
}

std::string Network::NewCode()
{
    const std::string number = std::to_string(++m_outside.issued);
    return "0300A4" + std::string(9 - number.size(), '0') + number;
}

std::string Network::Register(std::string_view request)
{
    constexpr std::string_view citizen = "<codiceFiscaleCittadino>P";
    const std::size_t at = request.find(citizen);
    const std::size_t prescription =
        at == std::string_view::npos ? 99 : static_cast<std::size_t>(request.at(at + citizen.size()) - '0');
    const auto found = std::ranges::find(m_expected, prescription, &Sending::prescription);
    Sending sending{prescription, Fate::Accepted}; // of a whole form that is sent once more
    if (found != m_expected.end())
    {
        sending = *found;
        m_expected.erase(found);
    }
    CheckItems(request, m_plan.prescriptions.at(prescription));
    Registered registered{prescription, sending.fate, ""};
    std::string reply = RegistrationReply(sending, registered);
    if (!registered.code.empty())
    {
        m_lastCode = registered.code;
        m_outside.Give(static_cast<int>(prescription), registered.code).atRegistration = true;
    }
    m_all.push_back(std::move(registered));
    return reply;
}

void Network::CheckItems(std::string_view request, const Prescription& prescription) const
{
    const bool hasItem = request.find("<codicePrestazione>A1</codicePrestazione>") != std::string_view::npos;
    if (!hasItem && !prescription.withoutItems)
    {
        m_outside.Violated(SubjectOf(prescription) + " went out without its items");
    }
}

std::string Network::RegistrationReply(const Sending& sending, Registered& registered)
{
    const Fate fate = sending.fate;
    const bool raises = fate == Fate::LostBefore;
    m_raises = raises;
    if (raises || fate == Fate::LostAfter || fate == Fate::WithoutOutcome)
    {
        registered.code = raises ? "" : NewCode();
        return fate == Fate::WithoutOutcome ? Envelope("registraPrescrizione", "<altro/>") : "";
    }
    if (fate != Fate::Refused && fate != Fate::WithoutCode)
    {
        registered.code = fate == Fate::SameCode && !m_lastCode.empty() ? m_lastCode : NewCode();
    }
    const std::string code = registered.code.empty() ? "" : Element("identificativoUnivoco", registered.code);
    std::string content =
        Element("esitoServizio", "OK") + Element("datiRisposta", Element("datiAmministrativiPrescrizione", code));
    content += fate == Fate::Flagged ? Entry("listaWarning", "warning", "Warning") : "";
    content += fate == Fate::RefusedByList ? Entry("listaEccezioni", "eccezione", "Eccezione") : "";
    content = Element("rispostaRicettaRegistrata", content);
    const bool isRefused = fate == Fate::Refused || fate == Fate::RefusedWithCode;
    return Envelope("registraPrescrizione", Element("param", (isRefused ? Refusal("RIC0002") : "") + content));
}

// --- The end of the phase ---

std::string Network::End()
{
    const Closing& closing = m_round->closing;
    if (closing.shape == Shape::LostBefore)
    {
        m_raises = true;
        return {};
    }
    MakeResults();
    std::string results;
    for (const Result& result : m_results)
    {
        results += Element("risultatoRegistrazione", TextOf(result));
    }
    const std::string data = Element("datiRisposta", Element("elencoRisultati", results));
    const std::string_view service = "fineFasePrescrittiva";
    m_hasResults = true;
    switch (closing.shape)
    {
    case Shape::Elsewhere:
        return Envelope(service, Element("param", "<datiRisposta/>" + Element("altro", results)));
    case Shape::RefusedQuietly:
        return Envelope(service, Element("param", Refusal("PRXY000032") + data));
    case Shape::Refused:
        return Envelope(service, Element("param", Refusal("RIC0003") + data));
    case Shape::Proper:
        return Envelope(service, Element("param", data));
    default:
        m_hasResults = false;
        return WithoutResults(closing.shape);
    }
}

std::string Network::WithoutResults(Shape shape)
{
    const std::string_view service = "fineFasePrescrittiva";
    switch (shape)
    {
    case Shape::RefusedBare:
        return Envelope(service, Element("param", Refusal("ADPT010003")));
    case Shape::WithoutOutcome:
        return Envelope(service, "<altro/>");
    case Shape::SoapFault:
        return R"(<SOAP-ENV:Envelope xmlns:SOAP-ENV="e"><SOAP-ENV:Body>)" +
               Element("SOAP-ENV:Fault", Element("faultcode", "F1") + Element("faultstring", "Guasto")) +
               "</SOAP-ENV:Body></SOAP-ENV:Envelope>";
    default:
        return {};
    }
}

void Network::MakeResults()
{
    const Closing& closing = m_round->closing;
    m_results.clear();
    for (const std::int32_t kind : {1, 2})
    {
        for (std::size_t i = m_phase; i < m_all.size(); ++i)
        {
            const bool isListed = IsTaken(m_all[i].fate) || (closing.listsRefused && m_all[i].fate != Fate::LostBefore);
            if (isListed && m_plan.prescriptions.at(m_all[i].prescription).kind == kind)
            {
                AddResult(i);
            }
        }
    }
    m_phase = m_all.size();
    Arrange(closing);
    for (const Result& result : m_results)
    {
        if (!result.code.empty())
        {
            GivenCode& given = m_outside.Give(result.prescription, result.code);
            given.protocol = result.protocol;
            given.confirmed = result.isOk;
        }
    }
}

void Network::Arrange(const Closing& closing)
{
    std::size_t place = 0;
    std::erase_if(m_results, [&](const Result&) { return HasBit(closing.missing, place++); });
    if (closing.order == Order::Reversed)
    {
        std::ranges::reverse(m_results);
    }
    else if (closing.order == Order::Rotated && !m_results.empty())
    {
        std::rotate(m_results.begin(), m_results.begin() + 1, m_results.end());
    }
    if (closing.strangers != 0)
    {
        const std::size_t before = closing.strangers == 1 ? 0 : m_results.size() / (closing.strangers == 2 ? 1 : 2);
        Result stranger;
        stranger.code = NewCode();
        stranger.protocol = "M" + std::to_string(++m_outside.issued);
        m_results.insert(m_results.begin() + static_cast<std::ptrdiff_t>(before), std::move(stranger));
    }
}

void Network::AddResult(std::size_t place)
{
    const Closing& closing = m_round->closing;
    const Registered& registered = m_all[place];
    const std::size_t bit = m_results.size();
    Result result;
    result.registered = static_cast<int>(place);
    result.prescription = static_cast<int>(registered.prescription);
    result.code = registered.code;
    result.isOk = IsTaken(registered.fate) && !HasBit(closing.notOk | closing.negative, bit);
    result.isNegative = HasBit(closing.negative, bit);
    if (HasBit(closing.codeless, bit) || (!result.isOk && result.code.empty()))
    {
        result.code.clear();
    }
    else if (result.code.empty() || HasBit(closing.otherCode, bit))
    {
        result.code = NewCode();
    }
    result.protocol = result.isOk ? "M" + std::to_string(++m_outside.issued) : "";
    m_results.push_back(std::move(result));
}

std::string Network::TextOf(const Result& result)
{
    const std::string code = result.code.empty() ? "" : Element("identificativoUnivoco", result.code);
    if (result.isNegative)
    {
        return Refusal("RIC0004") + code;
    }
    return Element("esitoRegistrazione", result.isOk ? "OK" : "KO") + Element("idModulo", result.protocol) + code +
           Element("messaggioRegistrazione", result.isOk ? "" : "Non registrata");
}

} // namespace vellumo::life
