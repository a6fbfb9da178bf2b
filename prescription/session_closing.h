// The host operation ChiudiSessionePrescrizione: shows what SISS refused or flagged, stores the codes that it gave,
// and ends the prescribing phase, whose reply carries the final result of every prescription.
//
// A code that SISS gave at registration and that the end of the phase did not confirm, and one that could not be
// stored, goes to the host's journal of service errors, and so do all of them when the operator gives the batch up.
#pragma once

#include "host/prescriptions.h"
#include "service/provider_context.h"

namespace vellumo::prescription
{

class SessionClosing
{
public:
    explicit SessionClosing(const service::ProviderContext& context)
        : m_context(context)
    {
    }

    // Returns whether the host is to print. Faults of the two steps are trapped and return False; a fault of the
    // session object itself goes through.
    [[nodiscard]] bool Run(host::PrescriptionSession& session) const;

private:
    [[nodiscard]] bool Close(host::PrescriptionSession& session) const;
    // False when the phase was not ended, or not all of it could be stored.
    [[nodiscard]] bool ReviewAndEnd(host::PrescriptionSession& session) const;

    const service::ProviderContext& m_context;
};

} // namespace vellumo::prescription
