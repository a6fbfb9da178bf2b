// The host operation IdentificaPaziente: asks SISS who the citizen in front of the doctor is and brings the local
// patient up to date with the answer. Traps its own faults: the operation then ends with what it had reached.
#pragma once

#include "host/value.h"
#include "service/provider_context.h"
#include "service/service_request.h"
#include "service/service_response.h"

#include <cstdint>
#include <optional>

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
    // One attempt, written into `outcome` as far as it gets; True when the operator asked to try again.
    [[nodiscard]] bool Attempt(const host::Value& idPaziente, IdentificationOutcome& outcome) const;
    [[nodiscard]] bool React(const service::ServiceResponse& response, IdentificationOutcome& outcome) const;
    [[nodiscard]] std::optional<service::ServiceRequest> BuildRequest(const host::Value& idPaziente) const;
    [[nodiscard]] std::optional<service::ServiceRequest>
    BuildExtendedIdentificationRequest(const host::Value& idPaziente) const;

    const service::ProviderContext& m_context;
};

} // namespace vellumo::patient
