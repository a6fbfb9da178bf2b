#include "prescription/end_of_phase.h"

#include "prescription/payload.h"
#include "service/service_failure.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace vellumo::prescription
{
namespace
{

// Codes of an ended phase that the operator need not see.
constexpr std::array<std::string_view, 2> silentCodes = {"ADPT010003", "PRXY000032"};

bool MustBeShown(const service::ServiceResponse& response)
{
    return response.Failed() && std::ranges::find(silentCodes, response.FirstCode()) == silentCodes.end();
}

std::vector<SentPrescription*> NotCancelled(std::vector<SentPrescription>& sent)
{
    std::vector<SentPrescription*> prescriptions;
    for (auto& prescription : sent)
    {
        if (!prescription.record->Get(ricetta::annullata).ToBoolean())
        {
            prescriptions.push_back(&prescription);
        }
    }
    return prescriptions;
}

} // namespace

bool EndOfPhase::Run(const host::PrescriptionSession& session, std::vector<SentPrescription>& sent) const
{
    const auto prescriptions = NotCancelled(sent);
    const auto response = Send(session);
    if (!response)
    {
        return false;
    }
    if (MustBeShown(*response))
    {
        service::ReportServiceFailure(*response, m_context.journal, m_context.desktop);
    }
    return StoreAll(PairFinalResults(FinalResults(*response), prescriptions));
}

std::shared_ptr<service::ServiceResponse> EndOfPhase::Send(const host::PrescriptionSession& session) const
{
    auto request = m_context.factory.GetRequest(service::rtFineFasePrescrittiva);
    const auto options = session.Options();
    if (request && options)
    {
        WriteDataSetVersion(*options, *request);
    }
    return request ? m_context.sender.SendServiceRequest(*request) : nullptr;
}

bool EndOfPhase::StoreAll(const std::vector<PairedResult>& pairs) const
{
    auto next = pairs.begin();
    try
    {
        for (; next != pairs.end(); ++next)
        {
            Store(*next);
        }
        return true;
    }
    catch (const std::exception& fault)
    {
        for (; next != pairs.end(); ++next)
        {
            if (next->result.IsConfirmed())
            {
                Settle(*next, fault.what());
            }
        }
        return false;
    }
}

void EndOfPhase::Store(const PairedResult& pair) const
{
    if (pair.result.IsConfirmed())
    {
        Settle(pair, StoreConfirmed(pair));
    }
    else
    {
        ShowUnconfirmed(pair.result);
    }
}

Reason EndOfPhase::StoreConfirmed(const PairedResult& pair) const
{
    const auto row = m_rows.Find(*pair.prescription);
    if (!row)
    {
        return noRow;
    }
    row->Set("NumeroProtocollo", pair.result.Protocollo());
    row->Set("Annullata", false);
    return m_rows.SaveWithCode(*row, *pair.prescription, pair.result.Iup());
}

// What the operator must know of a prescription that is not registered.
void EndOfPhase::ShowUnconfirmed(const FinalResult& result) const
{
    if (result.HasOutcome())
    {
        m_context.desktop.Show({result.Message(), "Errore!!", ui::Icon::Critical, ui::Buttons::Ok});
    }
    else if (const auto refusal = result.Refusal())
    {
        const auto failure = service::ServiceFactory::ParseServiceException(refusal);
        service::ShowServiceError(failure.get(), failure->Exceptions, m_context.desktop);
    }
}

// A prescription that only one side counts shifts all that follow. The code that was given at registration tells.
void EndOfPhase::Settle(const PairedResult& pair, Reason reason) const
{
    const auto key = pair.prescription->record->Key();
    const auto given = pair.prescription->GivenIup();
    const auto final = pair.result.Iup();
    if (given != final)
    {
        m_journal.OtherCode(key, given, final);
    }
    if (reason)
    {
        m_journal.NotSaved(key, {final, pair.result.Protocollo()}, reason);
    }
    pair.prescription->settled = true;
}

} // namespace vellumo::prescription
