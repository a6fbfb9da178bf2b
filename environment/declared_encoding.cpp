#include "environment/declared_encoding.h"

#include "environment/ansi_text.h"
#include "host/text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace vellumo::environment
{
namespace
{

constexpr std::string_view utf16LittleMark = "\xFF\xFE";
constexpr std::string_view utf16BigMark = "\xFE\xFF";

// "iso-8859-1" of <?xml version="1.0" encoding="iso-8859-1"?>; "" when it names none.
std::string_view DeclaredEncoding(std::string_view text)
{
    constexpr std::string_view keyword = "encoding";
    if (!text.starts_with("<?xml"))
    {
        return {};
    }
    const auto declaration = text.substr(0, text.find("?>"));
    const auto found = declaration.find(keyword);
    const auto open = found == std::string_view::npos ? found : declaration.find_first_of("\"'", found);
    if (open == std::string_view::npos)
    {
        return {};
    }
    const auto close = declaration.find(declaration[open], open + 1);
    return declaration.substr(open + 1, close == std::string_view::npos ? close : close - open - 1);
}

// Half a pair and half a unit are no text.
std::optional<std::string> FromUtf16(std::string_view bytes, bool bigEndian)
{
    if (bytes.size() % 2 != 0)
    {
        return std::nullopt;
    }
    const auto unit = [&](std::size_t at)
    {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        return static_cast<std::uint32_t>(bigEndian ? first << 8U | second : second << 8U | first);
    };
    std::string text;
    text.reserve(bytes.size() / 2);
    for (std::size_t at = 0; at < bytes.size(); at += 2)
    {
        std::uint32_t code = unit(at);
        if (code >= 0xD800 && code < 0xE000)
        {
            const std::uint32_t low = at + 2 < bytes.size() ? unit(at + 2) : 0;
            if (code >= 0xDC00 || low < 0xDC00 || low >= 0xE000)
            {
                return std::nullopt;
            }
            code = 0x10000 + ((code - 0xD800) << 10U) + (low - 0xDC00);
            at += 2;
        }
        host::AppendCharacter(code, text);
    }
    return text;
}

} // namespace

std::optional<std::string> DecodeXml(std::string bytes)
{
    if (bytes.starts_with(utf16LittleMark) || bytes.starts_with(utf16BigMark))
    {
        return FromUtf16(std::string_view(bytes).substr(utf16LittleMark.size()), bytes.starts_with(utf16BigMark));
    }
    if (bytes.starts_with(host::utf8Mark))
    {
        return bytes;
    }
    const auto isOneOf = [encoding = DeclaredEncoding(bytes)](const auto& names)
    { return std::ranges::any_of(names, [&](const char* name) { return host::EqualsIgnoringCase(encoding, name); }); };
    if (isOneOf(std::array{"", "UTF-8", "US-ASCII"}))
    {
        return bytes;
    }
    if (isOneOf(std::array{"ISO-8859-1", "Windows-1252"}))
    {
        return FromAnsi(bytes);
    }
    return std::nullopt;
}

} // namespace vellumo::environment
