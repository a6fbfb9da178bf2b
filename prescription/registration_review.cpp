#include "prescription/registration_review.h"

#include "environment/siss_date_time.h"
#include "service/siss_codes.h"

#include <algorithm>
#include <string>

namespace vellumo::prescription
{
namespace
{

using service::ServiceException;
using service::ServiceExceptions;
using service::ServiceResponse;
using Decision = ui::FormRicettaResult::Decision;

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
        if (!record.GetItem(ricetta::itemCodice, item).IsNull())
        {
            text += record.GetItem(ricetta::itemDescrizione, item).ToText() +
                    " ( Quantità : " + record.GetItem(ricetta::itemQuantita, item).ToText() + " )\r\n";
        }
    }
    return text;
}

ui::RicettaResult::Outcome OutcomeOf(const ServiceResponse& response)
{
    using Outcome = ui::RicettaResult::Outcome;
    // The reply never came, or nobody could read it.
    const bool isLost = response.FirstCode() == service::code::sebcont0001;
    return !response.Failed() ? Outcome::Flagged : isLost ? Outcome::WithoutAnswer : Outcome::Refused;
}

ui::Whom PatientOf(const RicettaRecord& record)
{
    return {.cognome = record.Text(ricetta::pazCognome),
            .nome = record.Text(ricetta::pazNome),
            .sesso = record.Text(ricetta::pazSesso),
            .dataNascita = environment::StoredDate(record.Get(ricetta::pazDataNascita)),
            .codiceFiscale = record.Text(ricetta::pazCodiceFiscale)};
}

std::vector<ui::RicettaResult> RefusedAndFlagged(const std::vector<SentPrescription>& sent)
{
    std::vector<ui::RicettaResult> results;
    for (const auto& prescription : sent)
    {
        const ServiceResponse& response = *prescription.response;
        if (response.Failed() || response.Warnings.Count() > 0)
        {
            results.push_back({.outcome = OutcomeOf(response),
                               .descrizione = DescribeOutcome(response),
                               .prescrizioni = DescribeItems(*prescription.record),
                               .ricetta = prescription.Id().Name(),
                               .paziente = PatientOf(*prescription.record)});
        }
    }
    return results;
}

std::size_t CountAccepted(const std::vector<SentPrescription>& sent)
{
    return static_cast<std::size_t>(
        std::ranges::count_if(sent, [](const SentPrescription& each) { return !each.response->Failed(); }));
}

} // namespace

ReviewOutcome RegistrationReview::Run(std::vector<SentPrescription>& sent) const
{
    ui::FormRicettaResult window(RefusedAndFlagged(sent), CountAccepted(sent));
    m_context.desktop.ShowModal(window);
    if (window.Result() == Decision::CancelAll)
    {
        TellGivenUp(sent);
        return ReviewOutcome::GivenUp;
    }
    return StoreAll(sent, window.Result());
}

void RegistrationReview::TellGivenUp(std::vector<SentPrescription>& sent) const
{
    for (auto& prescription : sent)
    {
        if (!prescription.GivenIup().empty())
        {
            SettleUnstored(prescription, "L'operatore ha annullato l'operazione.");
        }
    }
}

ReviewOutcome RegistrationReview::StoreAll(std::vector<SentPrescription>& sent,
                                           ui::FormRicettaResult::Decision decision) const
{
    auto next = sent.begin();
    try
    {
        for (; next != sent.end(); ++next)
        {
            if (const Reason reason = Store(*next, decision); !reason.empty())
            {
                SettleUnstored(*next, reason);
            }
        }
        return ReviewOutcome::Stored;
    }
    catch (const std::exception& fault)
    {
        const std::string why = service::WhyOf(fault);
        for (; next != sent.end(); ++next)
        {
            SettleUnstored(*next, why);
        }
        return ReviewOutcome::BrokenOff;
    }
}

Reason RegistrationReview::Store(SentPrescription& prescription, ui::FormRicettaResult::Decision decision) const
{
    const bool cancelsRefused = decision == Decision::CancelRefused;
    const bool cancelled = cancelsRefused && prescription.response->Failed();
    prescription.record->Set(ricetta::annullata, cancelled);
    const auto row = m_rows.Find(prescription.Id());
    if (!row)
    {
        return noRow;
    }
    row->Set("Annullata", cancelled);
    if (!cancelsRefused)
    {
        return RicettaRows::Save(*row);
    }
    const Reason reason = m_rows.SaveWithCode(*row, prescription, prescription.GivenIup());
    prescription.stored = reason.empty();
    return reason;
}

void RegistrationReview::SettleUnstored(SentPrescription& prescription, Reason reason) const
{
    m_journal.NotSaved(prescription.Id(), {prescription.GivenIup(), ""}, reason, prescription.response->OpenCode);
    prescription.settled = true;
}

} // namespace vellumo::prescription
