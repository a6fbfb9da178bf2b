// The host's shared rows that a patient refers to: towns and ASLs. Each is looked up once in the life of this object,
// which belongs to one run of one operation; it must not outlive a transaction that was taken back, since an ASL that
// was created in it is gone then. Faults go through.
#pragma once

#include "service/provider_context.h"

#include <cstdint>
#include <string>
#include <string_view>
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

    // Identifier of the ASL with that code, its description refreshed, or the row made when there was none; 0 when its
    // region is unknown.
    [[nodiscard]] std::int32_t AslOf(const std::string& sigla, const std::string& description);

private:
    [[nodiscard]] std::int32_t RegionOf(const std::string& code);
    [[nodiscard]] std::int32_t WriteAsl(const std::string& number, std::int32_t region,
                                        const std::string& description) const;

    const service::ProviderContext& m_context;
    std::unordered_map<std::string, std::int32_t> m_towns;
    std::unordered_map<std::string, std::int32_t> m_regions;
    struct Asl
    {
        std::int32_t id = 0;
        std::string description; // as last stored
    };
    std::unordered_map<std::string, Asl> m_asls;
};

// The two parts of the code that SISS gives an ASL: region, then number.
[[nodiscard]] std::string RegionCodeOf(std::string_view siglaAsl);
[[nodiscard]] std::string AslNumberOf(std::string_view siglaAsl);

} // namespace vellumo::patient
