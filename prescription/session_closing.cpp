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

// Why a prescription was not stored; null: it was, or there was nothing to store.
using Reason = const char*;
constexpr Reason noRow = "La ricetta non è nella tabella RicettaSSN.";
constexpr Reason refusedSave = "Il programma ha rifiutato il salvataggio.";

Reason Save(host::Record& row)
{
    return row.Save() ? nullptr : refusedSave;
}

// A code that the row had from another registration is known to SISS still, so it must not vanish.
Reason SaveWithCode(host::Record& row, const SentPrescription& prescription, const std::string& iup,
                    const Journal& journal)
{
    std::string old; // one that cannot be read must not keep the new one from being stored
    host::PassOver([&] { old = row.Get("CodiceIUP").ToText(); });
    old.erase(old.find_last_not_of(' ') + 1); // a column of fixed width pads
    row.Set("CodiceIUP", iup);
    const Reason reason = Save(row);
    if (!reason && !old.empty() && old != iup && old != prescription.GivenIup())
    {
        journal.Replaced(prescription.record->Key(), old, iup);
    }
    return reason;
}

// Calls `store` for each entry, then `tell` with its reason. One that is not stored does not keep the next ones from
// being stored; a fault ends the work, and then it is the reason of the entries that are left.
template <class Entry, class Store, class Tell>
bool StoreEach(std::vector<Entry>& entries, Store&& store, Tell&& tell)
{
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
    {
        try
        {
            tell(*entry, store(*entry));
        }
        catch (const std::exception& fault)
        {
            for (; entry != entries.end(); ++entry)
            {
                tell(*entry, fault.what());
            }
            return false;
        }
    }
    return true;
}

// The operator's decision in the row and in the record, which the end of the phase goes by.
Reason StoreReview(const SentPrescription& prescription, FormRicettaResult::Decision decision, host::Record& row,
                   const Journal& journal)
{
    const bool cancelled = decision == FormRicettaResult::Decision::CancelRefused && prescription.response->Failed();
    row.Set("Annullata", cancelled);
    prescription.record->Set("Annullata", cancelled);
    return decision == FormRicettaResult::Decision::CancelRefused
               ? SaveWithCode(row, prescription, prescription.GivenIup(), journal)
               : Save(row);
}

// The final result of one prescription.
struct Registered
{
    xml::Node result; // empty when the end of the phase has none for it
    SentPrescription* prescription = nullptr;

    [[nodiscard]] xml::Node Outcome() const { return result.Select("esitoRegistrazione"); }
    [[nodiscard]] bool IsConfirmed() const { return Outcome().Text() == "OK"; }
    [[nodiscard]] std::string Iup() const { return result.Text("identificativoUnivoco"); }
    [[nodiscard]] std::string Protocollo() const { return result.Text("idModulo"); }
};

// What the operator must know of a prescription that is not registered.
void ShowUnconfirmed(const Registered& registered, ui::Desktop& desktop)
{
    if (registered.Outcome())
    {
        desktop.Show(
            {registered.result.Text("messaggioRegistrazione"), "Errore!!", ui::Icon::Critical, ui::Buttons::Ok});
    }
    else if (const auto refusal = registered.result.Select("esitoNegativo"))
    {
        const auto failure = service::ServiceFactory::ParseServiceException(refusal);
        service::ShowServiceError(failure.get(), failure->Exceptions, desktop);
    }
}

Reason StoreFinalResult(const Registered& registered, host::Record& row, const Journal& journal)
{
    row.Set("NumeroProtocollo", registered.Protocollo());
    row.Set("Annullata", false);
    return SaveWithCode(row, *registered.prescription, registered.Iup(), journal);
}

// The final results carry no sign of the prescription that they belong to: their order decides, and a prescription
// that only one side counts shifts all that follow. The code that was given at registration tells.
void TellConfirmed(const Registered& registered, Reason reason, const Journal& journal)
{
    const auto key = registered.prescription->record->Key();
    const auto given = registered.prescription->GivenIup();
    const auto final = registered.Iup();
    if (given != final)
    {
        journal.OtherCode(key, given, final);
    }
    if (reason)
    {
        journal.NotSaved(key, {final, registered.Protocollo()}, reason);
    }
    registered.prescription->settled = true;
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
    std::vector<SentPrescription> sent;
    bool answer = false;
    host::PassOver(
        [&]
        {
            sent = SentPrescriptions(session);
            answer = ReviewRegistrationResults(sent);
        });
    if (answer)
    {
        answer = false;
        host::PassOver([&] { answer = EndPrescribingPhase(session, sent); });
    }
    for (const auto& prescription : sent)
    {
        if (const auto iup = prescription.GivenIup(); !prescription.settled && !iup.empty())
        {
            m_journal.NotConfirmed(prescription.record->Key(), iup);
        }
    }
    const auto options = session.Options();
    const bool printedBySiss = options && (options->TipoRicetta == host::OpzioniRicetta::electronic ||
                                           (options->TipoRicetta == host::OpzioniRicetta::paperForm &&
                                            options->ModalitaStampa == host::OpzioniRicetta::printedBySiss));
    return answer && !printedBySiss;
}

bool SessionClosing::ReviewRegistrationResults(std::vector<SentPrescription>& sent) const
{
    FormRicettaResult window(ToShow(sent));
    m_context.desktop.ShowModal(window);
    if (window.Result() == FormRicettaResult::Decision::CancelAll)
    {
        sent.clear(); // the operator gave the batch up: nothing is written about it, not even a line
        return false;
    }
    const auto store = [&](const SentPrescription& prescription)
    {
        const auto row = FindRow(prescription);
        return row ? StoreReview(prescription, window.Result(), *row, m_journal) : noRow;
    };
    const auto tell = [&](SentPrescription& prescription, Reason reason)
    {
        if (reason)
        {
            m_journal.NotSaved(prescription.record->Key(), {prescription.GivenIup(), ""}, reason);
            prescription.settled = true;
        }
    };
    return StoreEach(sent, store, tell);
}

std::unique_ptr<host::Record> SessionClosing::FindRow(const SentPrescription& prescription) const
{
    return m_objects.CreatePrescriptionData(prescription.kind, m_context.services)->Find(prescription.record->Key());
}

std::shared_ptr<ServiceResponse> SessionClosing::SendEndOfPhase(const host::PrescriptionSession& session) const
{
    auto request = m_context.factory.GetRequest(service::rtFineFasePrescrittiva);
    const auto options = session.Options();
    if (request && options)
    {
        WriteDataSetVersion(*options, *request);
    }
    return request ? m_context.sender.SendServiceRequest(*request) : nullptr;
}

bool SessionClosing::EndPrescribingPhase(const host::PrescriptionSession& session,
                                         std::vector<SentPrescription>& sent) const
{
    std::vector<Registered> registered;
    for (auto& prescription : sent)
    {
        if (!prescription.record->Get("Annullata").ToBoolean())
        {
            registered.push_back({{}, &prescription});
        }
    }
    const auto response = SendEndOfPhase(session);
    if (!response)
    {
        return false;
    }
    if (response->Failed() && std::ranges::find(silentCodes, FirstCode(*response)) == silentCodes.end())
    {
        service::ReportServiceFailure(*response, m_context.services, m_context.desktop);
    }

    const auto results = response->Data.Descendants("risultatoRegistrazione");
    registered.resize(std::min(results.size(), registered.size()));
    for (std::size_t pair = 0; pair < registered.size(); ++pair)
    {
        registered[pair].result = results[pair];
    }
    const auto store = [&](const Registered& each) -> Reason
    {
        if (!each.IsConfirmed())
        {
            ShowUnconfirmed(each, m_context.desktop);
            return nullptr;
        }
        const auto row = FindRow(*each.prescription);
        return row ? StoreFinalResult(each, *row, m_journal) : noRow;
    };
    const auto tell = [&](const Registered& each, Reason reason)
    {
        if (each.IsConfirmed())
        {
            TellConfirmed(each, reason, m_journal);
        }
    };
    return StoreEach(registered, store, tell);
}

} // namespace vellumo::prescription
