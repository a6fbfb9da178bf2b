#include "xml/characters.h"

#include <cstdint>

namespace vellumo::xml
{
namespace
{

// Length of the UTF-8 sequence of one character that XML 1.0 allows, at the start of `text`; 0 for anything else.
std::size_t AllowedCharacter(std::string_view text)
{
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const unsigned first = byte(0);
    if (first < 0x80)
    {
        return first >= 0x20 || first == '\t' || first == '\n' || first == '\r' ? 1 : 0;
    }
    const std::size_t length = first >= 0xC2 && first < 0xE0   ? 2
                               : first >= 0xE0 && first < 0xF0 ? 3
                               : first >= 0xF0 && first < 0xF5 ? 4
                                                               : 0;
    if (length == 0 || text.size() < length)
    {
        return 0;
    }
    std::uint32_t code = first & (0xFFU >> (length + 1));
    for (std::size_t at = 1; at < length; ++at)
    {
        if ((byte(at) & 0xC0U) != 0x80)
        {
            return 0;
        }
        code = code << 6U | (byte(at) & 0x3FU);
    }
    constexpr std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool forbidden = code < smallest[length] || (code >= 0xD800 && code < 0xE000) || code == 0xFFFE ||
                           code == 0xFFFF || code > 0x10FFFF;
    return forbidden ? 0 : length;
}

} // namespace

std::string_view Trimmed(std::string_view text) noexcept
{
    const auto first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string WithoutForbiddenCharacters(std::string_view text)
{
    std::string clean;
    clean.reserve(text.size());
    for (std::size_t position = 0; position < text.size();)
    {
        const std::size_t length = AllowedCharacter(text.substr(position));
        clean.append(text.substr(position, length));
        position += length == 0 ? 1 : length;
    }
    return clean;
}

} // namespace vellumo::xml
