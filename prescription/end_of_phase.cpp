#include "prescription/end_of_phase.h"

#include "host/fault.h"
#include "prescription/payload.h"
#include "service/service_failure.h"
#include "service/siss_codes.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace vellumo::prescription
{
namespace
{

// Codes of an ended phase that the operator need not see.
constexpr std::array<std::string_view, 2> silentCodes = {service::code::adpt010003, service::code::prxy000032};

bool MustBeShown(const service::ServiceResponse& response)
{
    return response.Failed() && std::ranges::find(silentCodes, response.FirstCode()) == silentCodes.end();
}

std::vector<std::string> IupsOf(const std::vector<FinalResult>& results)
{
    std::vector<std::string> iups(results.size());
    std::ranges::transform(results, iups.begin(), &FinalResult::Iup);
    return iups;
}

Codes CodesOf(const FinalResult& result)
{
    return {result.Iup(), result.Protocollo()};
}

// A session that faulted may have kept the response all the same.
std::vector<host::UnkeptCode> UnkeptCodes(const host::OpzioniRicetta* options,
                                          const std::vector<SentPrescription>& sent)
{
    auto unkept = options == nullptr ? std::vector<host::UnkeptCode>() : options->UnkeptCodes;
    std::erase_if(unkept, [&](const auto& code)
                  { return std::ranges::any_of(sent, [&](const auto& kept) { return kept.GivenIup() == code.iup; }); });
    return unkept;
}

// The prescriptions sent, and behind them those whose response the session did not keep.
std::vector<Registered> RegisteredOf(const std::vector<SentPrescription>& sent,
                                     const std::vector<host::UnkeptCode>& unkept)
{
    std::vector<Registered> registered;
    registered.reserve(sent.size() + unkept.size());
    for (const auto& prescription : sent)
    {
        registered.push_back({prescription.GivenIup(), !prescription.record->Get(ricetta::annullata).ToBoolean()});
    }
    for (const auto& code : unkept)
    {
        registered.push_back({code.iup, false});
    }
    return registered;
}

} // namespace

bool EndOfPhase::Run(const host::PrescriptionSession& session, std::vector<SentPrescription>& sent) const
{
    const auto options = session.Options();
    const std::int32_t user = m_journal.User();
    Results results;
    const auto response = Send(options.get(), [&](const service::ServiceResponse& received)
                               { results = Assign(received, sent, options.get(), user); });
    if (!response)
    {
        return false;
    }
    for (auto& leftOver : results.leftOver)
    {
        Tell(leftOver);
    }
    return StoreAll(*response, results.pairs);
}

std::shared_ptr<service::ServiceResponse> EndOfPhase::Send(const host::OpzioniRicetta* options,
                                                           const service::ServiceSender::Received& received) const
{
    auto request = m_context.factory.GetRequest(service::rtFineFasePrescrittiva);
    if (!request)
    {
        throw host::Fault("Manca il modello della richiesta di fine fase prescrittiva.");
    }
    if (options != nullptr)
    {
        WriteDataSetVersion(*options, *request);
    }
    return m_context.sender.SendServiceRequest(*request, {}, received);
}

EndOfPhase::Results EndOfPhase::Assign(const service::ServiceResponse& response, std::vector<SentPrescription>& sent,
                                       const host::OpzioniRicetta* options, std::int32_t user) const
{
    const auto all = FinalResults(response);
    const auto unkept = UnkeptCodes(options, sent);
    const auto registered = RegisteredOf(sent, unkept);
    const auto pairing = PairFinalResults(IupsOf(all), registered);
    Results results;
    for (const auto& [result, position] : pairing.pairs)
    {
        const bool isGiven = all[result].Iup() == registered[position].iup; // kept since its registration
        results.pairs.push_back(
            {all[result], &sent[position],
             isGiven ? nullptr : m_journal.Keep(sent[position].Id().Name(), CodesOf(all[result]), user)});
    }
    for (const auto& [result, owner] : pairing.leftOver)
    {
        SentPrescription* const prescription = owner && *owner < sent.size() ? &sent[*owner] : nullptr;
        const std::string subject = prescription != nullptr ? prescription->Id().Name()
                                    : owner                 ? unkept[*owner - sent.size()].subject
                                                            : "Fine della fase prescrittiva";
        results.leftOver.push_back(
            {all[result], prescription, subject,
             prescription != nullptr ? nullptr : m_journal.Keep(subject, CodesOf(all[result]), user)});
    }
    return results;
}

void EndOfPhase::Tell(LeftOverResult& leftOver) const
{
    const Codes codes = CodesOf(leftOver.result);
    if (leftOver.prescription != nullptr)
    {
        m_journal.LeftOver(leftOver.subject, codes, leftOver.prescription->response->OpenCode);
        leftOver.prescription->settled = true;
    }
    else if (!codes.iup.empty() || !codes.protocollo.empty())
    {
        m_journal.LeftOver(leftOver.subject, codes, leftOver.open);
    }
}

bool EndOfPhase::StoreAll(const service::ServiceResponse& response, std::vector<PairedResult>& pairs) const
{
    auto next = pairs.begin();
    try
    {
        if (MustBeShown(response))
        {
            service::ReportServiceFailure(response, m_context.journal, m_context.desktop);
        }
        for (; next != pairs.end(); ++next)
        {
            Store(*next);
        }
        return true;
    }
    catch (const std::exception& fault)
    {
        if (next == pairs.end())
        {
            m_journal.ClosingBroken(fault);
        }
        const std::string why = service::WhyOf(fault);
        for (; next != pairs.end(); ++next)
        {
            if (next->result.IsConfirmed() || next->prescription->GivenIup().empty())
            {
                Settle(*next, why);
            }
        }
        return false;
    }
}

void EndOfPhase::Store(PairedResult& pair) const
{
    if (pair.result.IsConfirmed())
    {
        Settle(pair, StoreConfirmed(pair));
        return;
    }
    if (!pair.result.Iup().empty())
    {
        TellOtherCode(pair);
    }
    ShowUnconfirmed(pair.result);
}

Reason EndOfPhase::StoreConfirmed(const PairedResult& pair) const
{
    const auto row = m_rows.Find(pair.prescription->Id());
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

// The code that was given at registration tells when the result may be another prescription's.
void EndOfPhase::TellOtherCode(PairedResult& pair) const
{
    const auto given = pair.prescription->GivenIup();
    const auto final = pair.result.Iup();
    if (given != final)
    {
        m_journal.OtherCode(pair.prescription->Id(), given, pair.prescription->response->OpenCode, final, pair.open);
        pair.prescription->settled = true;
    }
}

void EndOfPhase::Settle(PairedResult& pair, Reason reason) const
{
    SentPrescription& prescription = *pair.prescription;
    TellOtherCode(pair);
    OpenCode& open = pair.result.Iup() == prescription.GivenIup() ? prescription.response->OpenCode : pair.open;
    if (!reason.empty())
    {
        m_journal.NotSaved(prescription.Id(), CodesOf(pair.result), reason, open);
    }
    else
    {
        prescription::Settle(open);
    }
    prescription.settled = true;
}

} // namespace vellumo::prescription
