// The host operations RegistraPrescrizione and RegistraPrescrizioneSingola: send the prescriptions of a form to SISS,
// one request each, and keep the responses in the session. Nothing is judged or stored here; that happens when the
// session is closed. A prescription that the session cannot keep goes to the host's journal of service errors.
#pragma once

#include "host/prescriptions.h"
#include "service/provider_context.h"

#include <cstdint>

namespace vellumo::prescription
{

class Registration
{
public:
    explicit Registration(const service::ProviderContext& context)
        : m_context(context)
    {
    }

    // `numRicetta` 0: every prescription of the form. True also when nothing is to be sent (session without SISS or
    // for validation, no settings of the practice). A fault ends the loop, is shown, and returns False; the responses
    // kept until then stay in the session.
    [[nodiscard]] bool Run(host::PrescriptionSession& session, const host::Value& idRicetta,
                           const host::Value& numRicetta, std::int32_t kind) const;

private:
    void RegisterAll(host::PrescriptionSession& session, const host::PrescriptionKey& key, std::int32_t kind) const;
    void Register(host::PrescriptionSession& session, const host::PrescriptionKey& key, std::int32_t kind,
                  bool sendsClassC) const;

    const service::ProviderContext& m_context;
};

} // namespace vellumo::prescription
