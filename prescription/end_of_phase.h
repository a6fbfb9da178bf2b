// The last step of closing a prescribing session: tells SISS that the phase ends, and stores the final result of every
// prescription, which the reply carries.
#pragma once

#include "host/prescriptions.h"
#include "prescription/final_results.h"
#include "prescription/journal.h"
#include "prescription/ricetta_rows.h"
#include "prescription/sent_prescription.h"
#include "service/provider_context.h"

#include <memory>
#include <vector>

namespace vellumo::prescription
{

class EndOfPhase
{
public:
    explicit EndOfPhase(const service::ProviderContext& context)
        : m_context(context)
        , m_journal(context.services)
        , m_rows(context)
    {
    }

    // For the prescriptions that the operator did not cancel. False when SISS could not be asked, and when a fault
    // ended the storing: then it is the reason for all results that are left. A result that cannot be stored does not
    // keep the next ones from being stored. The codes of both go to the journal. A confirmed prescription is settled
    // either way. Faults before the storing go through.
    [[nodiscard]] bool Run(const host::PrescriptionSession& session, std::vector<SentPrescription>& sent) const;

private:
    // Null when there is no request or no response.
    [[nodiscard]] std::shared_ptr<service::ServiceResponse> Send(const host::PrescriptionSession& session) const;
    [[nodiscard]] bool StoreAll(const std::vector<PairedResult>& pairs) const;
    void Store(const PairedResult& pair) const;
    [[nodiscard]] Reason StoreConfirmed(const PairedResult& pair) const;
    void ShowUnconfirmed(const FinalResult& result) const;
    void Settle(const PairedResult& pair, Reason reason) const;

    const service::ProviderContext& m_context;
    Journal m_journal;
    RicettaRows m_rows;
};

} // namespace vellumo::prescription
