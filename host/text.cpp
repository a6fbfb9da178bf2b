#include "host/text.h"

#include <algorithm>
#include <array>

namespace vellumo::host
{
namespace
{

bool IsContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

// Bytes of the character that this one begins; 0 when it begins none.
std::size_t LengthFrom(unsigned char first)
{
    return first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
}

} // namespace

char32_t TakeCharacter(std::string_view text, std::size_t& position) noexcept
{
    const auto rest = text.substr(position++);
    const auto first = static_cast<unsigned char>(rest.front());
    const std::size_t length = LengthFrom(first);
    if (length == 1)
    {
        return first;
    }
    if (length == 0 || rest.size() < length)
    {
        return notUtf8;
    }
    char32_t character = first & (0x7FU >> length);
    for (const char byte : rest.substr(1, length - 1))
    {
        if (!IsContinuation(byte))
        {
            return notUtf8;
        }
        character = character << 6U | (static_cast<unsigned char>(byte) & 0x3FU);
    }
    constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000}; // by length
    const bool isSurrogate = character >= 0xD800 && character < 0xE000;
    if (character < smallest.at(length) || isSurrogate || character > 0x10FFFF)
    {
        return notUtf8;
    }
    position += length - 1;
    return character;
}

void AppendCharacter(char32_t character, std::string& out)
{
    const auto more = [&](unsigned shift) { out += static_cast<char>(0x80U | (character >> shift & 0x3FU)); };
    if (character < 0x80)
    {
        out += static_cast<char>(character);
    }
    else if (character < 0x800)
    {
        out += static_cast<char>(0xC0U | character >> 6U);
        more(0);
    }
    else if (character < 0x10000)
    {
        out += static_cast<char>(0xE0U | character >> 12U);
        more(6);
        more(0);
    }
    else
    {
        out += static_cast<char>(0xF0U | character >> 18U);
        more(12);
        more(6);
        more(0);
    }
}

std::size_t CharacterCount(std::string_view text) noexcept
{
    std::size_t count = 0;
    for (std::size_t position = 0; position < text.size(); ++count)
    {
        static_cast<void>(TakeCharacter(text, position));
    }
    return count;
}

std::string FirstCharacters(std::string_view text, std::size_t count)
{
    std::size_t position = 0;
    for (; count > 0 && position < text.size(); --count)
    {
        static_cast<void>(TakeCharacter(text, position));
    }
    return std::string(text.substr(0, position));
}

std::string LastCharacters(std::string_view text, std::size_t count)
{
    std::size_t position = text.size();
    for (; count > 0 && position > 0; --count)
    {
        --position;
        while (position > 0 && IsContinuation(text[position]))
        {
            --position;
        }
    }
    return std::string(text.substr(position));
}

bool EqualsIgnoringCase(std::string_view left, std::string_view right) noexcept
{
    // Most differ in length, and most others in nothing.
    return left == right || (left.size() == right.size() && std::ranges::equal(left, right, {}, Lower, Lower));
}

std::string WithoutCase(std::string_view text)
{
    std::string folded(text);
    std::ranges::transform(folded, folded.begin(), Lower);
    return folded;
}

std::string_view Trimmed(std::string_view text, std::string_view outer) noexcept
{
    const auto first = text.find_first_not_of(outer);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(outer) - first + 1);
}

std::string Joined(const std::vector<std::string>& parts, std::string_view between)
{
    std::string text;
    for (std::size_t i = 0; i < parts.size(); ++i)
    {
        text.append(i == 0 ? "" : between).append(parts[i]);
    }
    return text;
}

std::string Replaced(std::string text, std::string_view part, std::string_view instead)
{
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + instead.size()))
    {
        text.replace(at, part.size(), instead);
    }
    return text;
}

} // namespace vellumo::host
