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
#include <string>
#include <vector>

namespace vellumo::prescription
{

class EndOfPhase
{
public:
    explicit EndOfPhase(const service::ProviderContext& context)
        : m_context(context)
        , m_journal(context)
        , m_rows(context)
    {
    }

    // Stores for the prescriptions that the operator did not cancel. False when SISS could not be asked, and when a
    // fault ended the storing: then it is the reason for all results that are left. A result that cannot be stored does
    // not keep the next ones from being stored. The codes of both go to the journal, and so do the results that belong
    // to no prescription that is stored. A confirmed prescription is settled either way. Faults before the storing go
    // through.
    [[nodiscard]] bool Run(const host::PrescriptionSession& session, std::vector<SentPrescription>& sent) const;

private:
    struct PairedResult
    {
        FinalResult result;
        SentPrescription* prescription; // never null
        OpenCode open;                  // when the code is not the one given at registration
    };
    struct LeftOverResult
    {
        FinalResult result;
        SentPrescription* prescription; // that registration gave the code to; null: none that is known here
        std::string subject;
        OpenCode open; // when there is no prescription whose registration keeps it
    };
    struct Results
    {
        std::vector<PairedResult> pairs;
        std::vector<LeftOverResult> leftOver;
    };

    // Null when there is no response.
    [[nodiscard]] std::shared_ptr<service::ServiceResponse>
    Send(const host::OpzioniRicetta* options, const service::ServiceSender::Received& received) const;
    // Every code of the reply is in the folder of traces when this returns.
    [[nodiscard]] Results Assign(const service::ServiceResponse& response, std::vector<SentPrescription>& sent,
                                 const host::OpzioniRicetta* options, std::int32_t user) const;
    void Tell(LeftOverResult& leftOver) const;
    [[nodiscard]] bool StoreAll(const service::ServiceResponse& response, std::vector<PairedResult>& pairs) const;
    void Store(PairedResult& pair) const;
    [[nodiscard]] Reason StoreConfirmed(const PairedResult& pair) const;
    void ShowUnconfirmed(const FinalResult& result) const;
    void TellOtherCode(PairedResult& pair) const;
    void Settle(PairedResult& pair, Reason reason) const;

    const service::ProviderContext& m_context;
    Journal m_journal;
    RicettaRows m_rows;
};

} // namespace vellumo::prescription
