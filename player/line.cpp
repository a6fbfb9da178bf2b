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

// What stands behind "{today" at the beginning of `text` up to "}": "+31 siss"; nothing when it is none of that.
struct Today
{
    std::int32_t days = 0;
    std::string_view form;
    std::size_t length = 0; // of all of it
};

std::optional<Today> ReadToday(const Place& place, std::string_view text)
{
    constexpr std::string_view opening = "{today";
    const auto close = text.find('}');
    if (!text.starts_with(opening) || close == std::string_view::npos)
    {
        return std::nullopt;
    }
    Today today{0, text.substr(opening.size(), close - opening.size()), close + 1};
    if (today.form.starts_with('+') || today.form.starts_with('-'))
    {
        const char* const end = today.form.data() + today.form.size();
        const auto read = std::from_chars(today.form.data() + (today.form.front() == '+' ? 1 : 0), end, today.days);
        constexpr std::int32_t most = 1'000'000; // more than two thousand years
        if (read.ec == std::errc::result_out_of_range || today.days > most || today.days < -most)
        {
            throw SyntaxError(place, "there is no such day");
        }
        today.form.remove_prefix(read.ec == std::errc() ? static_cast<std::size_t>(read.ptr - today.form.data()) : 0);
    }
    const bool isForm = today.form.empty() || today.form == " siss" || today.form == " shown";
    return isForm ? std::optional(today) : std::nullopt;
}

// "{today}", "{today-31}", "{today+5 siss}", "{today shown}"
std::string WithDates(const Place& place, std::string_view text)
{
    std::string dated;
    while (!text.empty())
    {
        const auto brace = std::min(text.find('{'), text.size());
        dated += text.substr(0, brace);
        text.remove_prefix(brace);
        const auto today = ReadToday(place, text);
        if (today)
        {
            const auto date = host::Date::FromOle(host::SystemClock().Now().DayNumber() + today->days);
            dated += today->form == " siss"    ? date.ToSissText()
                     : today->form == " shown" ? date.ToDayText()
                                               : norda::ValueText(date);
        }
        else
        {
            dated += text.substr(0, 1);
        }
        text.remove_prefix(std::min(today ? today->length : 1, text.size()));
    }
    return dated;
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
