#include "simulator/siss/network.h"

#include "host/fault.h"
#include "simulator/siss/replies.h"

#include <chrono>
#include <thread>

namespace vellumo::siss
{
namespace
{

// A plain text, which is how the bridge reports what went wrong before the network was reached.
constexpr auto noSession = "ERRORE: nessuna sessione SISS attiva su questa postazione.";

// What COM reports for an error that the bridge raises.
constexpr auto bridgeError = static_cast<std::int32_t>(0x80004005U);

constexpr std::string_view prescribingServices = "m:GSSC.";

// Whether the service does its work, whatever becomes of the reply.
bool Works(const Behaviour& behaviour)
{
    const auto* const refusal = std::get_if<Refusal>(&behaviour.reply);
    return behaviour.reply.index() == 0 || std::holds_alternative<LostReply>(behaviour.reply) ||
           (refusal != nullptr && refusal->withData);
}

Behaviour Refuse(std::string code, std::string message)
{
    Behaviour behaviour;
    behaviour.reply = Refusal{std::move(code), std::move(message), {}, {}};
    return behaviour;
}

const Citizen* FindByProfile(const Citizens& citizens, const Element& request)
{
    const auto get = [&](const std::string& path) { return request.TextAt("param/" + path).value_or(""); };
    if (const auto code = get("profiloCittadino/codiceFiscale"); !code.empty())
    {
        return citizens.Find(code);
    }
    return citizens.Find(get("profiloCittadino/cognome"), get("profiloCittadino/nome"),
                         get("profiloCittadino/dataNascita"));
}

} // namespace

void Network::MarkAsSimulation()
{
    m_prescribing.MarkAsSimulation();
    m_certificates.MarkAsSimulation();
}

std::string Network::CallSebMethod(const std::string& requestXml)
{
    m_exchanges.push_back({requestXml, ""});
    const auto number = m_exchanges.size();
    if (onCall)
    {
        onCall(requestXml);
    }
    const auto call = m_behaviours.count(number) != 0 ? number : 0;
    const auto found = m_behaviours.find(call);
    const auto behaviour = found == m_behaviours.end() ? Behaviour() : found->second;
    m_behaved.insert(call);
    std::this_thread::sleep_for(std::chrono::milliseconds(behaviour.delayMilliseconds));
    if (const auto* const raise = std::get_if<Raise>(&behaviour.reply))
    {
        throw host::Fault(raise->message, bridgeError, "Winbridge4seb.Bean.1");
    }
    const auto envelope = ReadXml(requestXml);
    const auto* const body = envelope.Find("SOAP-ENV:Body");
    if (body == nullptr || body->children.size() != 1)
    {
        throw host::Fault("La richiesta non ha un solo elemento nel suo Body.");
    }
    auto reply = Answer(body->children.front(), behaviour);
    m_exchanges.back().reply = reply;
    if (onReply)
    {
        onReply(reply);
    }
    return reply;
}

std::string Network::AnswerPrescribing(const Element& request, const Behaviour& behaviour)
{
    if (request.name == "m:GSSC.inizioFasePrescrittiva")
    {
        return WriteReply(request.name, behaviour, m_prescribing.Begin());
    }
    if (!m_prescribing.IsOpen())
    {
        return WriteReply(request.name, Refuse("ADPT010001", "Nessuna fase prescrittiva aperta."), {});
    }
    if (request.name == "m:GSSC.registraPrescrizione")
    {
        return WriteReply(request.name, behaviour, m_prescribing.Register(request));
    }
    if (request.name == "m:GSSC.fineFasePrescrittiva")
    {
        return WriteReply(request.name, behaviour, m_prescribing.End());
    }
    return WriteReply(request.name, Refuse("SEBC00099", "Servizio sconosciuto."), {});
}

std::optional<ServiceAnswer> Network::TakeIn(const Element& request)
{
    if (request.name == Certificates::service)
    {
        return m_certificates.Receive(request);
    }
    if (request.name == Contacts::insertion)
    {
        return m_contacts.Insert(request);
    }
    if (request.name == Contacts::modification)
    {
        return m_contacts.Modify(request);
    }
    return std::nullopt;
}

std::string Network::Answer(const Element& request, const Behaviour& behaviour)
{
    if (!Works(behaviour))
    {
        return WriteReply(request.name, behaviour, {});
    }
    if (!m_sessionActive)
    {
        return noSession;
    }
    if (!m_operatorCard)
    {
        return WriteReply(request.name, Refuse("PDCAR001", "Carta operatore non inserita."), {});
    }
    if (request.name.starts_with(prescribingServices))
    {
        return AnswerPrescribing(request, behaviour);
    }
    if (const auto answer = TakeIn(request))
    {
        Behaviour served = behaviour;
        if (const auto* const refusal = std::get_if<Refusal>(&*answer); refusal != nullptr && served.reply.index() == 0)
        {
            served.reply = *refusal;
        }
        const auto* const data = std::get_if<std::string>(&*answer);
        return WriteReply(request.name, served, data == nullptr ? std::string() : *data);
    }
    const bool bySissWindow = request.name == "m:ICCE.identificaCittadinoGUI";
    if (bySissWindow && m_chosen.empty())
    {
        return WriteReply(request.name, Refuse("APPL000103", "Operazione annullata dall'operatore."), {});
    }
    if (!bySissWindow && request.name != "m:ICCE.identificaCittadinoEsteso" &&
        request.name != "m:ICCE.identificaCittadino")
    {
        return WriteReply(request.name, Refuse("SEBC00099", "Servizio sconosciuto."), {});
    }
    const auto* const citizen = bySissWindow ? m_citizens.Find(m_chosen) : FindByProfile(m_citizens, request);
    return citizen == nullptr
               ? WriteReply(request.name, Refuse("SEBC00001", "Nessuna anagrafica corrisponde ai dati inseriti."), {})
               : WriteReply(request.name, behaviour, citizen->Xml());
}

} // namespace vellumo::siss
