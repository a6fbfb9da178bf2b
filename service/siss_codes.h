// The codes of SISS that the library knows: constants for whoever branches on one, and what each means for people.
// docs/assistenza.md shows the same rows, and a test compares the two. Only what SISS or its replies say themselves
// stands here; codes that the simulated network makes up are not SISS's.
#pragma once

#include <span>
#include <string_view>

namespace vellumo::service
{

// Named as they are spelled: of some, nothing is known but what the library does with them.
namespace code
{

inline constexpr std::string_view sebcont0001 = "SEBCONT0001"; // also of every reply that is no XML
inline constexpr std::string_view sebc00001 = "SEBC00001";
inline constexpr std::string_view pdcar001 = "PDCAR001";
inline constexpr std::string_view pdcar012 = "PDCAR012";
inline constexpr std::string_view appl000091 = "APPL000091";
inline constexpr std::string_view appl000103 = "APPL000103";
inline constexpr std::string_view adpt010003 = "ADPT010003";
inline constexpr std::string_view prxy000032 = "PRXY000032";
inline constexpr std::string_view ea0004 = "EA0004";
inline constexpr std::string_view ed0511 = "ED0511"; // of a field

} // namespace code

// What the services of contacts say in `esitoServizio`, in any case.
inline constexpr std::string_view contactRegistered = "S";
inline constexpr std::string_view contactRefused = "N";

// Italian, plain text without line breaks, sentences without full stop. Static: may be kept.
struct SissCode
{
    std::string_view code;     // "" for one that is not known
    std::string_view meaning;  // or `undocumentedCode`
    std::string_view who;      // can do something about it
    std::string_view remedy;   // what he can do
    std::string_view reaction; // what Vellumo itself does when it meets the code
};

inline constexpr std::string_view undocumentedCode = "non documentato: chiedere all'assistenza SISS";

// All of them, in the order in which people should read them.
[[nodiscard]] std::span<const SissCode> SissCodes() noexcept;

// What the code means; compared exactly. Of a code that is not known: that it is not documented.
[[nodiscard]] const SissCode& ExplainSissCode(std::string_view code) noexcept;

} // namespace vellumo::service
