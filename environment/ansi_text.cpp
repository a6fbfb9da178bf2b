#include "environment/ansi_text.h"

#include "host/text.h"

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

char ToAnsi(char32_t code)
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
        host::AppendCharacter(byte >= 0x80 && byte < 0xA0 ? upperControls.at(byte - 0x80U) : byte, utf8);
    }
    return utf8;
}

std::string ToAnsi(std::string_view utf8)
{
    std::string bytes;
    bytes.reserve(utf8.size());
    for (std::size_t position = 0; position < utf8.size();)
    {
        bytes += ToAnsi(host::TakeCharacter(utf8, position));
    }
    return bytes;
}

} // namespace vellumo::environment
