// The host operation IdentificaPaziente: asks SISS who the citizen in front of the doctor is and brings the local
// patient up to date with the answer. Traps its own faults: there is no patient then, the host leaves it at that, and a
// line in the journal says why.
#pragma once

#include "host/value.h"
#include "service/provider_context.h"
#include "service/service_request.h"
#include "service/service_response.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vellumo::patient
{

struct IdentificationOutcome
{
    std::int32_t IDPaziente = 0; // 0: none
    bool Gestito = true;         // False: the host goes on with its own handling
    // The operator chose to go on without an active SISS session.
    bool WithoutSession = false;
};

class Identification
{
public:
    explicit Identification(const service::ProviderContext& context)
        : m_context(context)
    {
    }

    // `idPaziente` null: a fresh search; otherwise the local patient to check.
    [[nodiscard]] IdentificationOutcome Run(const host::Value& idPaziente) const noexcept;

private:
    struct Attempt
    {
        IdentificationOutcome outcome;
        bool retry = false; // the operator asked to try again
    };

    [[nodiscard]] Attempt Try(const host::Value& idPaziente) const;
    [[nodiscard]] Attempt React(const service::ServiceResponse& response, const host::Value& idPaziente) const;
    void Tell(const host::Value& idPaziente, const std::string& why) const;
    [[nodiscard]] std::optional<service::ServiceRequest> BuildRequest(service::RequestTypes type,
                                                                      const host::Value& idPaziente) const;
    [[nodiscard]] std::optional<service::ServiceRequest>
    BuildExtendedIdentificationRequest(const host::Value& idPaziente) const;

    const service::ProviderContext& m_context;
};

} // namespace vellumo::patient
