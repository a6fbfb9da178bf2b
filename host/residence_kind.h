// The kinds of address that the host keeps of a patient, each in a row of its own in Residenza.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace vellumo::host
{

enum class ResidenceKind : std::int32_t // IDTipoResidenza
{
    Residence = 1,
    Domicile = 3,
};

struct ResidenceKindName
{
    ResidenceKind kind;
    std::string_view name; // in the names of the host's columns and of SISS's elements, such as IndirizzoResidenza
};

inline constexpr std::array<ResidenceKindName, 2> residenceKinds = {{
    {ResidenceKind::Residence, "Residenza"},
    {ResidenceKind::Domicile, "Domicilio"},
}};

[[nodiscard]] constexpr std::string_view NameOf(ResidenceKind kind)
{
    return std::ranges::find(residenceKinds, kind, &ResidenceKindName::kind)->name;
}

} // namespace vellumo::host
