// 8-bit text: Windows-1252, the "ANSI" of the hosts that load this library. Text is UTF-8 everywhere else in it.
#pragma once

#include <string>
#include <string_view>

namespace vellumo::environment
{

// Each byte is one character; the five bytes that Windows-1252 leaves undefined become the control characters of the
// same number, as Windows has it.
[[nodiscard]] std::string FromAnsi(std::string_view bytes);

// A character that Windows-1252 does not have, and each byte that is no UTF-8, becomes "?".
[[nodiscard]] std::string ToAnsi(std::string_view utf8);

} // namespace vellumo::environment
