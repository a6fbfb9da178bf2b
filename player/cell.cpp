#include "player/cell.h"

#include "host/text.h"
#include "player/written.h"

#include <iomanip>
#include <map>
#include <sstream>

namespace vellumo::player
{
namespace
{

std::string Written(std::optional<ui::Colour> colour)
{
    std::ostringstream text;
    text << '#' << std::hex << std::uppercase << std::setw(6) << std::setfill('0') << colour.value_or(0);
    return colour ? text.str() : "plain";
}

std::string Written(ui::Image image)
{
    return image == ui::Image::Error ? "error" : image == ui::Image::Warning ? "warning" : "none";
}

std::string InDigits(const std::string& colour)
{
    static const std::map<std::string, std::string> names = {
        {"blue", "#0000FF"}, {"red", "#FF0000"}, {"black", "#000000"}, {"white", "#FFFFFF"}, {"yellow", "#FFFF00"}};
    const auto found = names.find(colour);
    return found == names.end() ? colour : found->second;
}

void ExpectLooks(const std::string& where, const std::string& marks, const ui::Cell& seen)
{
    const auto colours = Written(seen.foreground) + " on " + Written(seen.background);
    std::istringstream in(marks);
    for (std::string word; in >> word;)
    {
        if (word == "plain")
        {
            Expect(where + ", colours", "plain on plain", colours);
        }
        else if (word == "error" || word == "warning")
        {
            Expect(where + ", image", word, Written(seen.image));
        }
        else
        {
            const bool isBackground = word == "on" && in >> word;
            Expect(where + (isBackground ? ", background" : ", colour"), InDigits(word),
                   Written(isBackground ? seen.background : seen.foreground));
        }
    }
}

} // namespace

void ExpectCell(const std::string& where, const std::string& expected, const ui::Cell& seen)
{
    const auto open = expected.rfind('[');
    const bool marked = expected.ends_with(']') && open != std::string::npos;
    const auto written = marked ? host::Trimmed(std::string_view(expected).substr(0, open)) : expected;
    const auto text = Replaced(std::string(written), "\\n", "\r\n");
    if (text != "*")
    {
        Expect(where, text, seen.text);
    }
    ExpectLooks(where, marked ? expected.substr(open + 1, expected.size() - open - 2) : "", seen);
}

} // namespace vellumo::player
