// Characters as XML 1.0 has them: which ones separate, which ones a text may hold. This room knows nothing of the
// host's, which has its own rules for texts.
#pragma once

#include <string>
#include <string_view>

namespace vellumo::xml
{

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

// Without blanks at both ends; a part of `text`.
[[nodiscard]] std::string_view Trimmed(std::string_view text) noexcept;

// Without the characters that XML forbids and without bytes that are no UTF-8.
[[nodiscard]] std::string WithoutForbiddenCharacters(std::string_view text);

} // namespace vellumo::xml
