#include "diagnosi/exchanges/html.h"

#include "host/text.h"

#include <array>
#include <cstdio>

namespace vellumo::diagnosi
{
namespace
{

bool TurnsDirection(char32_t code)
{
    return code == 0x200E || code == 0x200F || (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

void AppendNumber(char32_t code, std::string& out)
{
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), "[U+%04X]", static_cast<unsigned>(code));
    out += number.data();
}

void AppendEscaped(char32_t code, std::string& out)
{
    constexpr char32_t firstSymbol = 0x2400; // of the control characters
    switch (code)
    {
    case U'&':
        out += "&amp;";
        break;
    case U'<':
        out += "&lt;";
        break;
    case U'>':
        out += "&gt;";
        break;
    case U'"':
        out += "&quot;";
        break;
    case U'\'':
        out += "&#39;";
        break;
    case host::notUtf8:
        out += "\xEF\xBF\xBD";
        break;
    default:
        if (code < 0x20 && code != U'\n' && code != U'\r' && code != U'\t')
        {
            host::AppendCharacter(firstSymbol + code, out);
        }
        else if ((code >= 0x7F && code < 0xA0) || TurnsDirection(code))
        {
            AppendNumber(code, out);
        }
        else
        {
            host::AppendCharacter(code, out);
        }
    }
}

} // namespace

std::string Escaped(std::string_view text)
{
    std::string out;
    out.reserve(text.size() + text.size() / 4);
    for (std::size_t position = 0; position < text.size();)
    {
        AppendEscaped(host::TakeCharacter(text, position), out);
    }
    return out;
}

std::string TextElement(std::string_view name, std::string_view style, std::string_view text)
{
    std::string out = "<";
    out.append(name);
    if (!style.empty())
    {
        out.append(" class=\"").append(style).append("\"");
    }
    return out.append(">").append(Escaped(text)).append("</").append(name).append(">");
}

} // namespace vellumo::diagnosi
