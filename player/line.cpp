#include "player/line.h"

#include "host/clock.h"
#include "host/date.h"
#include "host/text.h"
#include "simulator/norda/snapshot.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <sstream>

namespace vellumo::player
{
namespace
{

// "today", "today-31", "today+5 siss" or "today shown" as a date; empty when it is none of that.
std::optional<std::string> DateOf(const Place& place, std::string_view written)
{
    constexpr std::string_view today = "today";
    constexpr std::int32_t most = 1'000'000; // more than two thousand years
    const auto blank = std::min(written.find(' '), written.size());
    const auto form = written.substr(blank);
    if (!written.starts_with(today) || !(form.empty() || form == " siss" || form == " shown"))
    {
        return std::nullopt;
    }
    std::int32_t days = 0;
    if (const auto shift = written.substr(today.size(), blank - today.size()); !shift.empty())
    {
        const char* const end = shift.data() + shift.size();
        const auto read = std::from_chars(shift.data() + (shift.front() == '+' ? 1 : 0), end, days);
        if (read.ptr != end || read.ec == std::errc::invalid_argument || host::IsDigit(shift.front()))
        {
            return std::nullopt;
        }
        if (read.ec == std::errc::result_out_of_range || days > most || days < -most)
        {
            throw SyntaxError(place, "there is no such day");
        }
    }
    const auto date = host::Date::FromOle(host::SystemClock().Now().DayNumber() + days);
    return form == " siss" ? date.ToSissText() : form == " shown" ? date.ToDayText() : norda::ValueText(date);
}

// With dates for what stands in braces.
std::string WithDates(const Place& place, std::string_view text)
{
    std::string dated;
    for (auto open = text.find('{'); open != std::string_view::npos; open = text.find('{'))
    {
        const auto close = std::min(text.find('}', open), text.size());
        const auto date = close < text.size() ? DateOf(place, text.substr(open + 1, close - open - 1)) : std::nullopt;
        dated += date ? std::string(text.substr(0, open)) + *date : text.substr(0, open + 1);
        text.remove_prefix(date ? close + 1 : open + 1);
    }
    return dated.append(text);
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
        const auto dated = WithDates(place, std::string_view(raw).substr(0, raw.find('\r')));
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
