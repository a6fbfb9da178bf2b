// The host operation ApriSessionePrescrizione: lets the doctor choose the print options, tells SISS that a prescribing
// phase starts, and returns the host's session object. Faults go through to the host; there is no session then.
#pragma once

#include "host/opzioni_ricetta.h"
#include "host/prescriptions.h"
#include "service/provider_context.h"
#include "service/service_response.h"

#include <memory>

namespace vellumo::prescription
{

class SessionOpening
{
public:
    explicit SessionOpening(const service::ProviderContext& context)
        : m_context(context)
    {
    }

    // Null when the operator cancelled, or SISS refused and he did not want to go on without it.
    [[nodiscard]] std::shared_ptr<host::PrescriptionSession> Run() const;

private:
    struct Attempt
    {
        std::shared_ptr<host::PrescriptionSession> session;
        bool retry = false;
    };

    [[nodiscard]] Attempt Try(host::OpzioniRicetta& options) const;
    [[nodiscard]] Attempt React(const service::ServiceResponse& response) const;
    [[nodiscard]] bool IsElectronicByDefault() const;

    const service::ProviderContext& m_context;
};

} // namespace vellumo::prescription
