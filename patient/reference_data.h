// The host's shared rows that a patient refers to: towns and ASLs. Each is looked up once in the life of this object,
// which belongs to one run of one operation; it must not outlive a transaction that was taken back, since an ASL that
// was created in it is gone then. Faults go through.
#pragma once

#include "patient/citizen.h"
#include "service/provider_context.h"

#include <cstdint>
#include <string>
#include <unordered_map>

namespace vellumo::patient
{

class ReferenceData
{
public:
    explicit ReferenceData(const service::ProviderContext& context)
        : m_context(context)
    {
    }

    // Identifier of the town of that name; 0 when the host has none.
    [[nodiscard]] std::int32_t TownOf(const std::string& name);

    // Identifier of the host's row of the ASL, or of one made when there was none; 0 when its region is unknown. The
    // description is refreshed; an empty one leaves that of the row, which all patients of the ASL share.
    [[nodiscard]] std::int32_t AslOf(const Asl& asl);

private:
    [[nodiscard]] std::int32_t RegionOf(const std::string& code);
    [[nodiscard]] std::int32_t WriteAsl(const Asl& asl, std::int32_t region) const;

    const service::ProviderContext& m_context;
    std::unordered_map<std::string, std::int32_t> m_towns;
    std::unordered_map<std::string, std::int32_t> m_regions;
    struct StoredAsl
    {
        std::int32_t id = 0;
        std::string description; // as last stored
    };
    std::unordered_map<std::string, StoredAsl> m_asls; // by region and number, which are all that the row has of a code
};

} // namespace vellumo::patient
