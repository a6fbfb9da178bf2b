// 8-bit text (Windows-1252, the "ANSI" of the hosts that load this library) and the few operations on characters
// that the data need. Text is UTF-8 everywhere else in the library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vellumo::environment
{

// Each byte is one character; the five bytes that Windows-1252 leaves undefined become the control characters of the
// same number, as Windows has it.
[[nodiscard]] std::string FromAnsi(std::string_view bytes);

// A character that Windows-1252 does not have, and each byte that is no UTF-8, becomes "?".
[[nodiscard]] std::string ToAnsi(std::string_view utf8);

// Appends one character by its number, which Unicode has.
void AppendUtf8(std::uint32_t code, std::string& out);

// The first or last `count` characters of a UTF-8 text; all of a shorter one.
[[nodiscard]] std::string FirstCharacters(std::string_view utf8, std::size_t count);
[[nodiscard]] std::string LastCharacters(std::string_view utf8, std::size_t count);

// Without regard to the case of the letters A to Z, which is all that keys and keywords are made of.
[[nodiscard]] bool EqualsIgnoringCase(std::string_view left, std::string_view right);
// The text with those letters in lower case: the same for all texts that are equal so, a key for look-ups.
[[nodiscard]] std::string WithoutCase(std::string_view text);

} // namespace vellumo::environment
