// The host operation ChiudiSessionePrescrizione: shows what SISS refused or flagged, stores the codes that it gave,
// and ends the prescribing phase, whose answer carries the final result of every prescription.
//
// A code that SISS gave at registration and that the end of the phase did not confirm, and one that could not be
// stored, goes to the host's journal of service errors.
#pragma once

#include "host/prescriptions.h"
#include "prescription/journal.h"
#include "prescription/sent_response.h"
#include "service/provider_context.h"

#include <memory>
#include <vector>

namespace vellumo::prescription
{

class SessionClosing
{
public:
    SessionClosing(const service::ProviderContext& context, host::PrescriptionObjects& objects)
        : m_context(context)
        , m_objects(objects)
        , m_journal(context.services)
    {
    }

    // The answer tells the host whether to print. Faults of the two steps are trapped there and answer False; a fault
    // of the session object itself goes through.
    [[nodiscard]] bool Run(host::PrescriptionSession& session) const;

private:
    [[nodiscard]] bool Close(host::PrescriptionSession& session) const;
    // The results window and the storing of the codes returned at registration. False: the operator cancelled all,
    // nothing is written, and `sent` is empty.
    [[nodiscard]] bool ReviewRegistrationResults(std::vector<SentPrescription>& sent) const;
    [[nodiscard]] bool EndPrescribingPhase(const host::PrescriptionSession& session,
                                           std::vector<SentPrescription>& sent) const;
    // Null when there is no request or no response.
    [[nodiscard]] std::shared_ptr<service::ServiceResponse>
    SendEndOfPhase(const host::PrescriptionSession& session) const;
    // Null when the host has no such row.
    [[nodiscard]] std::unique_ptr<host::Record> FindRow(const SentPrescription& prescription) const;

    const service::ProviderContext& m_context;
    host::PrescriptionObjects& m_objects;
    Journal m_journal;
};

} // namespace vellumo::prescription
