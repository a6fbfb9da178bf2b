// Text at the border with Windows: UTF-8 inside the library, UTF-16 outside. What is no valid UTF-8 or UTF-16 (a lone
// surrogate) becomes U+FFFD. Embedded NULs are kept.
#pragma once

#include <string>
#include <string_view>

namespace vellumo::windows
{

[[nodiscard]] std::wstring ToWide(std::string_view text);
[[nodiscard]] std::string FromWide(std::wstring_view text);
[[nodiscard]] bool IsUtf8(std::string_view text);

// The way the host's database and objects compare their names: without regard to case, by the invariant rules.
[[nodiscard]] bool EqualsIgnoringCase(std::wstring_view left, std::wstring_view right);

} // namespace vellumo::windows
