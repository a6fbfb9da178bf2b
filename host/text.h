// Texts by character: UTF-8, letters and digits, blanks. Nothing here depends on the locale, which belongs to the
// host's process and changes what the language's own functions take for a letter.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::host
{

constexpr std::string_view blanks = " \t\r\n";
// The byte order mark with which a file may say that it is UTF-8.
constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

// What `TakeCharacter` returns for a byte that is no UTF-8; no character has this number.
constexpr char32_t notUtf8 = 0xFFFFFFFF;

// The character at `position`, which must be within the text, and steps over it. A byte that begins none (also of a
// surrogate or of a longer form than needed) is stepped over alone.
[[nodiscard]] char32_t TakeCharacter(std::string_view text, std::size_t& position) noexcept;
void AppendCharacter(char32_t character, std::string& out);

// In characters; each byte that is no UTF-8 counts as one.
[[nodiscard]] std::size_t CharacterCount(std::string_view text) noexcept;
// The first or last `count` characters of a text; all of a shorter one.
[[nodiscard]] std::string FirstCharacters(std::string_view text, std::size_t count);
[[nodiscard]] std::string LastCharacters(std::string_view text, std::size_t count);

// Letters are those from A to Z, which is all that keys and keywords are made of.
[[nodiscard]] constexpr bool IsDigit(char character) noexcept
{
    return character >= '0' && character <= '9';
}
[[nodiscard]] constexpr char Lower(char character) noexcept
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}
[[nodiscard]] constexpr char Upper(char character) noexcept
{
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}
[[nodiscard]] constexpr bool IsLetter(char character) noexcept
{
    return Lower(character) >= 'a' && Lower(character) <= 'z';
}

[[nodiscard]] bool EqualsIgnoringCase(std::string_view left, std::string_view right) noexcept;
// The text with its letters in lower case: the same for all texts that are equal so, a key for look-ups.
[[nodiscard]] std::string WithoutCase(std::string_view text);

// Without the characters of `outer` at both ends; a part of `text`.
[[nodiscard]] std::string_view Trimmed(std::string_view text, std::string_view outer = blanks) noexcept;

[[nodiscard]] std::string Joined(const std::vector<std::string>& parts, std::string_view between);
// With each `part` as `instead`.
[[nodiscard]] std::string Replaced(std::string text, std::string_view part, std::string_view instead);

} // namespace vellumo::host
