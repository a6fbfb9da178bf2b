#include "environment/ansi_text.h"

#include <algorithm>
#include <array>

namespace vellumo::environment
{
namespace
{

// Windows-1252 from 0x80 to 0x9F; below and above, the byte is the code point.
constexpr std::array<char16_t, 32> upperControls = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr std::uint32_t notUtf8 = 0xFFFFFFFF;

bool IsContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

// Reads one character and steps over it; a byte that starts none is stepped over alone.
std::uint32_t TakeCharacter(std::string_view text, std::size_t& position)
{
    const auto first = static_cast<unsigned char>(text[position++]);
    const std::size_t more = first < 0x80 ? 0 : first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC2 ? 1 : 4;
    if (more == 0)
    {
        return first;
    }
    if (more == 4 || position + more > text.size() ||
        !std::all_of(text.begin() + static_cast<std::ptrdiff_t>(position),
                     text.begin() + static_cast<std::ptrdiff_t>(position + more), IsContinuation))
    {
        return notUtf8;
    }
    std::uint32_t code = first & (0x3FU >> more);
    for (std::size_t count = 0; count < more; ++count)
    {
        code = code << 6U | (static_cast<unsigned char>(text[position++]) & 0x3FU);
    }
    return code;
}

char Lower(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

char ToAnsi(std::uint32_t code)
{
    if (code < 0x80 || (code >= 0xA0 && code <= 0xFF))
    {
        return static_cast<char>(code);
    }
    const auto* match = std::ranges::find(upperControls, code);
    return match == upperControls.end() ? '?' : static_cast<char>(0x80 + (match - upperControls.begin()));
}

} // namespace

std::string FromAnsi(std::string_view bytes)
{
    std::string utf8;
    utf8.reserve(bytes.size());
    for (const char character : bytes)
    {
        const auto byte = static_cast<unsigned char>(character);
        AppendUtf8(byte >= 0x80 && byte < 0xA0 ? upperControls.at(byte - 0x80U) : byte, utf8);
    }
    return utf8;
}

std::string ToAnsi(std::string_view utf8)
{
    std::string bytes;
    bytes.reserve(utf8.size());
    for (std::size_t position = 0; position < utf8.size();)
    {
        bytes += ToAnsi(TakeCharacter(utf8, position));
    }
    return bytes;
}

void AppendUtf8(std::uint32_t code, std::string& out)
{
    const auto more = [&](unsigned shift) { out += static_cast<char>(0x80U | (code >> shift & 0x3FU)); };
    if (code < 0x80)
    {
        out += static_cast<char>(code);
    }
    else if (code < 0x800)
    {
        out += static_cast<char>(0xC0U | code >> 6U);
        more(0);
    }
    else if (code < 0x10000)
    {
        out += static_cast<char>(0xE0U | code >> 12U);
        more(6);
        more(0);
    }
    else
    {
        out += static_cast<char>(0xF0U | code >> 18U);
        more(12);
        more(6);
        more(0);
    }
}

std::string FirstCharacters(std::string_view utf8, std::size_t count)
{
    std::size_t position = 0;
    while (count > 0 && position < utf8.size())
    {
        TakeCharacter(utf8, position);
        --count;
    }
    return std::string(utf8.substr(0, position));
}

std::string LastCharacters(std::string_view utf8, std::size_t count)
{
    std::size_t position = utf8.size();
    while (count > 0 && position > 0)
    {
        --position;
        while (position > 0 && IsContinuation(utf8[position]))
        {
            --position;
        }
        --count;
    }
    return std::string(utf8.substr(position));
}

bool EqualsIgnoringCase(std::string_view left, std::string_view right)
{
    return std::ranges::equal(left, right, {}, Lower, Lower);
}

std::string WithoutCase(std::string_view text)
{
    std::string folded(text);
    std::ranges::transform(folded, folded.begin(), Lower);
    return folded;
}

} // namespace vellumo::environment
