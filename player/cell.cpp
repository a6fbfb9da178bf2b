#include "player/cell.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <sstream>

namespace vellumo::player
{
namespace
{

constexpr std::size_t longestShown = 1500;

struct ColourName
{
    const char* name;
    ui::Colour colour;
};

constexpr std::array<ColourName, 5> colours = {
    {{"blue", 0x0000FF}, {"red", 0xFF0000}, {"black", 0x000000}, {"white", 0xFFFFFF}, {"yellow", 0xFFFF00}}};

std::string Written(std::optional<ui::Colour> colour)
{
    if (!colour)
    {
        return "plain";
    }
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text = "#";
    for (int shift = 20; shift >= 0; shift -= 4)
    {
        text += digits[(*colour >> static_cast<unsigned>(shift)) & 0xFU];
    }
    return text;
}

std::string Canonical(const std::string& colour)
{
    const auto* const found =
        std::find_if(colours.begin(), colours.end(), [&](const ColourName& each) { return each.name == colour; });
    return found == colours.end() ? colour : Written(found->colour);
}

std::string NameOf(ui::Image image)
{
    switch (image)
    {
    case ui::Image::Error:
        return "error";
    case ui::Image::Warning:
        return "warning";
    case ui::Image::None:
        break;
    }
    return "none";
}

std::optional<std::string> Differs(const char* what, const std::string& expected, const std::string& seen)
{
    return expected == seen ? std::nullopt
                            : std::optional(std::string(what) + "\n  expected: " + Quoted(expected) +
                                            "\n  seen:     " + Quoted(seen));
}

std::optional<std::string> LooksDiffer(const std::string& marks, const CellSeen& seen)
{
    std::istringstream in(marks);
    for (std::string word; in >> word;)
    {
        std::optional<std::string> difference;
        if (word == "plain")
        {
            difference =
                Differs(", colours", "plain on plain", Written(seen.foreground) + " on " + Written(seen.background));
        }
        else if (word == "on")
        {
            in >> word;
            difference = Differs(", background", Canonical(word), Written(seen.background));
        }
        else if (word == "error" || word == "warning")
        {
            difference = Differs(", image", word, NameOf(seen.image));
        }
        else
        {
            difference = Differs(", colour", Canonical(word), Written(seen.foreground));
        }
        if (difference)
        {
            return difference;
        }
    }
    return std::nullopt;
}

// "\n" is written for a line break.
std::string WithLineBreaks(std::string text)
{
    for (std::size_t at = 0; (at = text.find("\\n", at)) != std::string::npos; at += 2)
    {
        text.replace(at, 2, "\r\n");
    }
    return text;
}

} // namespace

std::string Quoted(const std::string& text)
{
    std::string out = "\"";
    for (const char c : text.substr(0, longestShown))
    {
        if (c == '\r')
        {
            out += "\\r";
        }
        else if (c == '\n')
        {
            out += "\\n";
        }
        else
        {
            out += c;
        }
    }
    return out + (text.size() > longestShown ? "…\"" : "\"");
}

std::optional<std::string> CellDiffers(const std::string& expected, const CellSeen& seen)
{
    auto text = expected;
    std::string marks;
    const auto open = expected.rfind('[');
    if (!expected.empty() && expected.back() == ']' && open != std::string::npos)
    {
        marks = expected.substr(open + 1, expected.size() - open - 2);
        text = expected.substr(0, open);
        while (!text.empty() && text.back() == ' ')
        {
            text.pop_back();
        }
    }
    if (text != "*")
    {
        if (auto difference = Differs("", WithLineBreaks(text), seen.text))
        {
            return difference;
        }
    }
    return LooksDiffer(marks, seen);
}

} // namespace vellumo::player
