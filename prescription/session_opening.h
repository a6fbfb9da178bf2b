// The host operation ApriSessionePrescrizione: lets the doctor choose the print options, tells SISS that a prescribing
// phase starts, and answers the host's session object. Faults go through to the host; there is no session then.
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
    SessionOpening(const service::ProviderContext& context, host::PrescriptionObjects& objects)
        : m_context(context)
        , m_objects(objects)
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
    host::PrescriptionObjects& m_objects;
};

} // namespace vellumo::prescription
