// The host operations around a prescription's code that stay local: nothing is sent to SISS.
#pragma once

#include "host/prescriptions.h"
#include "host/value.h"
#include "service/provider_context.h"

#include <cstdint>
#include <optional>

namespace vellumo::prescription
{

class PrescriptionCheck
{
public:
    explicit PrescriptionCheck(const service::ProviderContext& context)
        : m_context(context)
    {
    }

    // VerificaPrescrizione, with `numRicetta` VerificaPrescrizioneSingola: True when the form (or the one
    // prescription) holds no valid registered prescription of that kind. Faults go through to the host.
    [[nodiscard]] bool Verify(const host::Value& idRicetta, const std::optional<host::Value>& numRicetta,
                              std::int32_t kind) const;

    // AnnullaPrescrizione: marks the host's row as cancelled; a registration on SISS stays. `value` is handed to the
    // host's prescription data class. False when there is no such row, and after a fault.
    [[nodiscard]] bool Cancel(const host::Value& idRicetta, const host::Value& numRicetta,
                              std::int32_t value) const noexcept;

private:
    [[nodiscard]] bool MarkCancelled(const host::PrescriptionKey& key, std::int32_t value) const;

    const service::ProviderContext& m_context;
};

} // namespace vellumo::prescription
