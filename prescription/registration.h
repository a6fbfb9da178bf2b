// The host operations RegistraPrescrizione and RegistraPrescrizioneSingola: send the prescriptions of a form to SISS,
// one request each, and keep the responses in the session. Nothing is judged or stored here; that happens when the
// session is closed. A code is in the folder of traces until then. A prescription that the session cannot keep goes to
// the host's journal of service errors.
#pragma once

#include "host/prescriptions.h"
#include "prescription/journal.h"
#include "service/provider_context.h"

#include <cstdint>
#include <exception>
#include <memory>

namespace vellumo::prescription
{

class Registration
{
public:
    explicit Registration(const service::ProviderContext& context)
        : m_context(context)
        , m_journal(context)
    {
    }

    // `numRicetta` 0: every prescription of the form. True also when nothing is to be sent (session without SISS or
    // for validation, no settings of the practice). A fault ends the loop, is shown, and returns False; the responses
    // kept until then stay in the session.
    [[nodiscard]] bool Run(host::PrescriptionSession& session, const host::Value& idRicetta,
                           const host::Value& numRicetta, std::int32_t kind) const;

private:
    // How far the loop has come.
    struct Progress
    {
        PrescriptionId at;                                // at first the form
        std::shared_ptr<service::ServiceResponse> unkept; // that of `at`, until the session has it
    };

    void RegisterAll(host::PrescriptionSession& session, Progress& progress) const;
    void Register(host::PrescriptionSession& session, Progress& progress, bool sendsClassC) const;
    // What the session does not keep stays in the options, which travel with it.
    void Keep(host::PrescriptionSession& session, const PrescriptionId& id,
              const std::shared_ptr<service::ServiceResponse>& response, host::OpzioniRicetta& options) const;
    void Tell(const Progress& progress, const std::exception& fault) const;

    const service::ProviderContext& m_context;
    Journal m_journal;
};

} // namespace vellumo::prescription
