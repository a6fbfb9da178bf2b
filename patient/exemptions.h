// The exemptions from charges that SISS reports for a citizen: described, given a local exemption by the operator,
// stored on the patient together with the pairing of SISS and local codes. Faults go through.
#pragma once

#include "patient/citizen.h"
#include "service/provider_context.h"

#include <cstdint>
#include <string>

namespace vellumo::patient
{

class Exemptions
{
public:
    explicit Exemptions(const service::ProviderContext& context)
        : m_context(context)
    {
    }

    // Adds what the reply does not say: the description, and the local exemption that the code was paired with before.
    // Without a readable table ESENZIONI the descriptions are empty.
    void Complete(SissExemptions& exemptions) const;

    // Lets the operator assign the missing ones and confirm. False when he cancelled; then nothing has changed.
    [[nodiscard]] bool Assign(Citizen& citizen) const;

    // Stores them on the patient, the dates of those that he has already overwritten. `deleteFirst`: the patient's own
    // ones are deleted before. Returns those left out, since their local exemption does not exist any more.
    [[nodiscard]] SissExemptions Store(const SissExemptions& exemptions, std::int32_t idPaziente,
                                       bool deleteFirst) const;

private:
    [[nodiscard]] bool Store(const ui::SissExemption& exemption, std::int32_t idPaziente) const;
    [[nodiscard]] std::int32_t LocalExemptionOf(const std::string& codice) const;

    const service::ProviderContext& m_context;
};

} // namespace vellumo::patient
