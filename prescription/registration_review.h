// The first step of closing a prescribing session: shows which prescriptions SISS refused or flagged, and stores the
// operator's decision and the codes that SISS gave at registration.
#pragma once

#include "prescription/journal.h"
#include "prescription/ricetta_rows.h"
#include "prescription/sent_prescription.h"
#include "service/provider_context.h"
#include "ui/form_ricetta_result.h"

#include <vector>

namespace vellumo::prescription
{

enum class ReviewOutcome
{
    Stored,    // or told to the journal why not: the phase can be ended
    BrokenOff, // by a fault
    GivenUp // by the operator, together with the whole batch: its codes are in the journal, the rows are as they were
};

class RegistrationReview
{
public:
    explicit RegistrationReview(const service::ProviderContext& context)
        : m_context(context)
        , m_journal(context)
        , m_rows(context)
    {
    }

    // A prescription that cannot be stored does not keep the next ones from being stored; a fault ends the storing,
    // and then it is the reason for all that are left. Their codes go to the journal, which settles them. Faults of
    // the window go through.
    [[nodiscard]] ReviewOutcome Run(std::vector<SentPrescription>& sent) const;

private:
    void TellGivenUp(std::vector<SentPrescription>& sent) const;
    [[nodiscard]] ReviewOutcome StoreAll(std::vector<SentPrescription>& sent,
                                         ui::FormRicettaResult::Decision decision) const;
    // The operator's decision in the row and in the record, which the end of the phase goes by.
    [[nodiscard]] Reason Store(SentPrescription& prescription, ui::FormRicettaResult::Decision decision) const;
    void SettleUnstored(SentPrescription& prescription, Reason reason) const;

    const service::ProviderContext& m_context;
    Journal m_journal;
    RicettaRows m_rows;
};

} // namespace vellumo::prescription
