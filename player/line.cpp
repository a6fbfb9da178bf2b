#include "player/line.h"

#include "host/clock.h"
#include "host/date.h"
#include "host/text.h"
#include "player/written.h"

#include <algorithm>
#include <regex>
#include <sstream>

namespace vellumo::player
{
namespace
{

// "{today}", "{today-31}", "{today+5 siss}", "{today shown}"
std::string WithDates(std::string text)
{
    static const std::regex form(R"(\{today([+-]\d+)?( siss| shown)?\})");
    for (std::smatch found; std::regex_search(text, found, form);)
    {
        const int days = found[1].matched ? std::stoi(found[1]) : 0;
        const auto date = host::Date::FromOle(host::SystemClock().Now().DayNumber() + days);
        const auto written = DateText(date, found[2] == " siss"    ? "%Y%m%d"
                                            : found[2] == " shown" ? "%d/%m/%Y"
                                                                   : dayForm);
        text = found.prefix().str() + written + found.suffix().str();
    }
    return text;
}

// The text in the quotes that open there; steps behind them.
std::string TakeQuoted(const Place& place, std::string_view text, std::size_t& at)
{
    std::string taken;
    while (true)
    {
        const auto close = text.find('"', ++at);
        if (close == std::string_view::npos)
        {
            throw SyntaxError(place, "a quote is not closed");
        }
        taken += text.substr(at, close - at);
        at = close + 1;
        if (at == text.size() || text[at] != '"')
        {
            return taken;
        }
        taken += '"';
    }
}

} // namespace

Line::Line(Place where, std::string_view written)
    : place(std::move(where))
    , text(host::Trimmed(written))
{
    for (std::size_t at = 0; at < text.size(); at = std::min(text.find_first_not_of(host::blanks, at), text.size()))
    {
        Word word{{}, text[at] == '"', at};
        word.text =
            word.quoted ? TakeQuoted(place, text, at) : text.substr(at, text.find_first_of(host::blanks, at) - at);
        at += word.quoted ? 0 : word.text.size();
        if (word.text == "#" && !word.quoted) // the rest is a comment
        {
            text.resize(word.at);
            text.resize(host::Trimmed(text).size());
            return;
        }
        words.push_back(std::move(word));
    }
}

std::vector<std::string> CellsOf(const Place& place, std::string_view text)
{
    std::vector<std::string> cells;
    for (std::size_t at = 0; at <= text.size(); ++at)
    {
        at = std::min(text.find_first_not_of(host::blanks, at), text.size());
        auto cell = at < text.size() && text[at] == '"' ? TakeQuoted(place, text, at) : std::string();
        // What stands between a closing quote and the next "|" belongs to the cell: its colours.
        const auto bar = std::min(text.find('|', at), text.size());
        const auto more = host::Trimmed(text.substr(at, bar - at));
        cell.append(cell.empty() || more.empty() ? "" : " ").append(more);
        cells.push_back(std::move(cell));
        at = bar;
    }
    return cells;
}

std::vector<Line> ReadLines(const std::string& file, const std::string& text)
{
    std::vector<Line> lines;
    std::istringstream in(text);
    Place place{file, 0};
    for (std::string raw; std::getline(in, raw);)
    {
        ++place.line;
        const auto dated = WithDates(raw.substr(0, raw.find('\r')));
        if (host::Trimmed(dated).starts_with('|'))
        {
            if (lines.empty())
            {
                throw SyntaxError(place, "a text block needs a line to belong to");
            }
            lines.back().block.push_back(dated.substr(std::min(dated.find('|') + 2, dated.size())));
        }
        else if (Line line(place, dated); !line.words.empty())
        {
            lines.push_back(std::move(line));
        }
    }
    return lines;
}

} // namespace vellumo::player
