// What becomes of each element and attribute of a message that leaves the practice. Only what a table names as harmless
// stays as it is; an element that the table does not know is masked.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace vellumo::diagnosi
{

enum class Mask
{
    Keep, // harmless: codes, outcomes, dates of the service
    FiscalCode,
    Card,
    Surname,
    GivenName,
    Year,   // a date of which the year stays
    Place,  // addresses, towns
    Health, // diagnoses, exemptions, drugs, notes
    Text,   // what SISS wrote for people
    Whole,  // a message that is no XML
    Quoted, // in lines: what stands in quotation marks, and what follows a code
    Found,  // in lines and names: what a message has as somebody's
    Machine,
    Other
};
inline constexpr std::size_t maskCount = static_cast<std::size_t>(Mask::Other) + 1;

// With which every value that was masked begins, pseudonyms and years apart.
inline constexpr std::string_view maskedBeginning = "[mascherato";

// By the element's name, with or without prefix.
[[nodiscard]] Mask MaskOfElement(std::string_view name) noexcept;
// A declaration of a prefix stays for the addresses that SISS uses.
[[nodiscard]] bool IsHarmlessAttribute(std::string_view name, std::string_view value) noexcept;

// Whether a value can be a code, an outcome or a date. A harmless element whose value is anything else is masked too.
[[nodiscard]] bool IsCodeLike(std::string_view value) noexcept;
// Of the shape of a fiscal code, also one whose digits were replaced because two people would have had the same.
[[nodiscard]] bool IsFiscalCode(std::string_view value) noexcept;

// How often each was masked.
class MaskTally
{
public:
    void Add(Mask mask) noexcept { ++m_counts.at(static_cast<std::size_t>(mask)); }
    [[nodiscard]] std::size_t Count(Mask mask) const { return m_counts.at(static_cast<std::size_t>(mask)); }

private:
    std::array<std::size_t, maskCount> m_counts{};
};

// What the operator reads: "codici fiscali".
[[nodiscard]] std::string_view NameOf(Mask mask) noexcept;

} // namespace vellumo::diagnosi
