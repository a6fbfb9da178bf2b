#include "prescription/session_closing.h"

#include "host/fault.h"
#include "prescription/payload.h"
#include "prescription/sent_response.h"
#include "service/service_failure.h"
#include "ui/form_ricetta_result.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::prescription
{
namespace
{

using service::ServiceException;
using service::ServiceExceptions;
using service::ServiceResponse;
using ui::FormRicettaResult;

constexpr const char* iupPath = "datiAmministrativiPrescrizione/identificativoUnivoco";

// Codes of an ended phase that the operator need not see.
constexpr std::array<std::string_view, 2> silentCodes = {"ADPT010003", "PRXY000032"};

std::string Line(const ServiceException& entry)
{
    return "\r\n - " + entry.Message + " (" + entry.Code + ")";
}

std::string Lines(const char* heading, const ServiceExceptions& entries)
{
    std::string text = heading;
    for (const auto& entry : entries)
    {
        text += Line(*entry);
    }
    return text;
}

std::string DescribeOutcome(const ServiceResponse& response)
{
    std::string text;
    if (response.Failed())
    {
        text = Lines("Si sono verificati i seguenti errori:", response.Exceptions);
        if (response.Exceptions.Count() == 0)
        {
            text += Line(*response.FailedResult);
        }
    }
    if (response.Warnings.Count() > 0)
    {
        text += (text.empty() ? "" : "\r\n") + Lines("Sono state riscontrate le seguenti anomalie:", response.Warnings);
    }
    return text;
}

std::string DescribeItems(const RicettaRecord& record)
{
    std::string text;
    for (std::int32_t item = 1; item <= record.DetailCount(); ++item)
    {
        if (!record.GetItem("Codice", item).IsNull())
        {
            text += record.GetItem("Descrizione", item).ToText() +
                    " ( Quantità : " + record.GetItem("Quantita", item).ToText() + " )\r\n";
        }
    }
    return text;
}

std::vector<ui::RicettaResult> ToShow(const std::vector<SentPrescription>& sent)
{
    std::vector<ui::RicettaResult> results;
    for (const auto& prescription : sent)
    {
        const ServiceResponse& response = *prescription.response;
        if (response.Failed() || response.Warnings.Count() > 0)
        {
            results.push_back({response.Failed(), DescribeOutcome(response), DescribeItems(*prescription.record)});
        }
    }
    return results;
}

// What SISS gave for one prescription.
struct Codes
{
    host::PrescriptionKey key;
    std::string iup;
    std::string protocollo;
};

std::string Describe(const host::PrescriptionKey& key)
{
    return "Ricetta " + std::to_string(key.IDRicetta) + ", numero " + std::to_string(key.NumRicetta);
}

void Record(const std::string& line, const host::HostServices& services)
{
    host::PassOver([&] { services.RequireUtils().RecordServiceError(line); });
}

// Codes that did not get into the host's table must not go with the session: support staff finds them in the host's
// journal.
void RecordUnsaved(const Codes& codes, const std::string& reason, const host::HostServices& services)
{
    if (codes.iup.empty() && codes.protocollo.empty())
    {
        return;
    }
    Record(Describe(codes.key) + ": codici del SISS non salvati (IUP " + codes.iup + ", protocollo " +
               codes.protocollo + "). " + reason,
           services);
}

// Why a prescription was not stored; null: it was, or there was nothing to store.
using Reason = const char*;
constexpr Reason noRow = "La ricetta non è nella tabella RicettaSSN.";
constexpr Reason refusedSave = "Il programma ha rifiutato il salvataggio.";

Reason Save(host::Record& row)
{
    return row.Save() ? nullptr : refusedSave;
}

// Calls `store` for each entry. One that is not stored does not keep the next ones from being stored; a fault ends the
// work, and then the codes of the entries that are left are recorded, too.
template <class Entry, class Store, class CodesOf>
bool StoreEach(const std::vector<Entry>& entries, Store&& store, CodesOf&& codesOf, const host::HostServices& services)
{
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
    {
        try
        {
            if (const Reason reason = store(*entry))
            {
                RecordUnsaved(codesOf(*entry), reason, services);
            }
        }
        catch (const std::exception& fault)
        {
            for (; entry != entries.end(); ++entry)
            {
                RecordUnsaved(codesOf(*entry), fault.what(), services);
            }
            return false;
        }
    }
    return true;
}

// The operator's decision in the row and in the record, which the end of the phase goes by.
Reason StoreReview(const SentPrescription& prescription, int decision, host::Record& row)
{
    const bool cancelled = decision == FormRicettaResult::cancelRefused && prescription.response->Failed();
    if (decision == FormRicettaResult::cancelRefused)
    {
        row.Set("CodiceIUP", prescription.response->GetData(iupPath));
    }
    row.Set("Annullata", cancelled);
    prescription.record->Set("Annullata", cancelled);
    return Save(row);
}

// The final result of one prescription.
struct Registered
{
    xml::Node result;
    SentPrescription prescription;
};

Codes CodesOf(const Registered& registered)
{
    const xml::Node& result = registered.result;
    return {registered.prescription.record->Key(), result.Text("identificativoUnivoco"), result.Text("idModulo")};
}

// The final results carry no sign of the prescription that they belong to: their order decides, and a prescription
// that only one side counts shifts all that follow. The code that was given at registration tells.
void RecordOtherCode(const Registered& registered, const host::HostServices& services)
{
    const auto given = registered.prescription.response->GetData(iupPath);
    const auto final = registered.result.Text("identificativoUnivoco");
    if (!given.empty() && !final.empty() && given != final)
    {
        Record(Describe(registered.prescription.record->Key()) + ": IUP " + given + " alla registrazione, IUP " +
                   final + " alla chiusura. Verificare sul SISS.",
               services);
    }
}

Reason StoreFinalResult(const xml::Node& result, host::Record& row, ui::Desktop& desktop)
{
    const auto outcome = result.Select("esitoRegistrazione");
    if (!outcome)
    {
        if (const auto refusal = result.Select("esitoNegativo"))
        {
            const auto failure = service::ServiceFactory::ParseServiceException(refusal);
            service::ShowServiceError(failure.get(), failure->Exceptions, desktop);
        }
        return nullptr;
    }
    if (outcome.Text() == "OK")
    {
        row.Set("NumeroProtocollo", result.Text("idModulo"));
        row.Set("CodiceIUP", result.Text("identificativoUnivoco"));
        row.Set("Annullata", false);
        return Save(row);
    }
    desktop.Show({result.Text("messaggioRegistrazione"), "Errore!!", ui::Icon::Critical, ui::Buttons::Ok});
    return nullptr;
}

} // namespace

bool SessionClosing::Run(host::PrescriptionSession& session) const
{
    const bool answer = Close(session);
    m_context.log.End();
    return answer;
}

bool SessionClosing::Close(host::PrescriptionSession& session) const
{
    if (session.DaValidare())
    {
        m_context.desktop.Show({"Le prescrizioni sono pronte per essere validate dal medico responsabile.",
                                "Informazione", ui::Icon::Information, ui::Buttons::Ok});
        return false;
    }
    if (session.SenzaSISS())
    {
        return true;
    }
    bool answer = false;
    host::PassOver([&] { answer = ReviewRegistrationResults(session); });
    if (answer)
    {
        answer = false;
        host::PassOver([&] { answer = EndPrescribingPhase(session); });
    }
    const auto options = session.Options();
    const bool printedBySiss = options && (options->TipoRicetta == host::OpzioniRicetta::electronic ||
                                           (options->TipoRicetta == host::OpzioniRicetta::paperForm &&
                                            options->ModalitaStampa == host::OpzioniRicetta::printedBySiss));
    return answer && !printedBySiss;
}

bool SessionClosing::ReviewRegistrationResults(const host::PrescriptionSession& session) const
{
    const auto sent = SentPrescriptions(session);
    FormRicettaResult window(ToShow(sent));
    m_context.desktop.ShowModal(window);
    if (window.Result() == FormRicettaResult::cancelAll)
    {
        return false;
    }
    const auto store = [&](const SentPrescription& prescription)
    {
        const auto row = FindRow(prescription);
        return row ? StoreReview(prescription, window.Result(), *row) : noRow;
    };
    const auto codesOf = [](const SentPrescription& prescription) {
        return Codes{prescription.record->Key(), prescription.response->GetData(iupPath), ""};
    };
    return StoreEach(sent, store, codesOf, m_context.services);
}

std::unique_ptr<host::Record> SessionClosing::FindRow(const SentPrescription& prescription) const
{
    return m_objects.CreatePrescriptionData(prescription.kind, m_context.services)->Find(prescription.record->Key());
}

bool SessionClosing::EndPrescribingPhase(const host::PrescriptionSession& session) const
{
    auto sent = SentPrescriptions(session);
    std::erase_if(sent, [](const SentPrescription& prescription)
                  { return prescription.record->Get("Annullata").ToBoolean(); });

    auto request = m_context.factory.GetRequest(service::rtFineFasePrescrittiva);
    const auto options = session.Options();
    if (request && options)
    {
        WriteDataSetVersion(*options, *request);
    }
    const auto response = request ? m_context.sender.SendServiceRequest(*request) : nullptr;
    if (!response)
    {
        return false;
    }
    if (response->Failed() && std::ranges::find(silentCodes, FirstCode(*response)) == silentCodes.end())
    {
        service::ReportServiceFailure(*response, m_context.services, m_context.desktop);
    }

    const auto results = response->Data.Descendants("risultatoRegistrazione");
    std::vector<Registered> registered;
    for (std::size_t pair = 0; pair < std::min(results.size(), sent.size()); ++pair)
    {
        registered.push_back({results[pair], sent[pair]});
    }
    const auto store = [&](const Registered& each)
    {
        RecordOtherCode(each, m_context.services);
        const auto row = FindRow(each.prescription);
        return row ? StoreFinalResult(each.result, *row, m_context.desktop) : noRow;
    };
    return StoreEach(registered, store, CodesOf, m_context.services);
}

} // namespace vellumo::prescription
