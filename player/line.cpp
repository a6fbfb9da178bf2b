#include "player/line.h"

#include "host/clock.h"
#include "host/date.h"
#include "player/written.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>
#include <sstream>

namespace vellumo::player
{
namespace
{

bool IsBlank(char c)
{
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

// "today", "today-31", "today+5 siss", "today shown"
std::optional<std::string> DateText(std::string_view name)
{
    constexpr std::string_view today = "today";
    if (name.substr(0, today.size()) != today)
    {
        return std::nullopt;
    }
    name.remove_prefix(today.size());
    int days = 0;
    if (!name.empty() && (name.front() == '-' || name.front() == '+'))
    {
        const auto* const first = name.data() + (name.front() == '+' ? 1 : 0);
        const auto result = std::from_chars(first, name.data() + name.size(), days);
        name.remove_prefix(static_cast<std::size_t>(result.ptr - name.data()));
    }
    const auto date = host::Date::FromOle(host::SystemClock().Now().DayNumber() + days);
    const auto day = DayText(date);
    if (name == " shown")
    {
        return day.substr(8) + '/' + day.substr(5, 2) + '/' + day.substr(0, 4);
    }
    return name == " siss" ? std::optional(date.ToSissText()) : name.empty() ? std::optional(day) : std::nullopt;
}

std::string WithDates(std::string_view text)
{
    std::string out;
    for (std::size_t at = 0; at < text.size();)
    {
        const auto close = text[at] == '{' ? text.find('}', at) : std::string_view::npos;
        const auto date =
            close == std::string_view::npos ? std::nullopt : DateText(text.substr(at + 1, close - at - 1));
        if (date)
        {
            out += *date;
            at = close + 1;
        }
        else
        {
            out += text[at++];
        }
    }
    return out;
}

// A comment begins with "#" at the line's begin or behind a blank, outside quotes.
std::string_view WithoutComment(std::string_view text)
{
    bool quoted = false;
    for (std::size_t at = 0; at < text.size(); ++at)
    {
        quoted = quoted != (text[at] == '"');
        const bool apart = at == 0 || IsBlank(text[at - 1]);
        if (!quoted && apart && text[at] == '#' && (at + 1 == text.size() || IsBlank(text[at + 1])))
        {
            return text.substr(0, at);
        }
    }
    return text;
}

} // namespace

Line::Line(Place place, std::string_view text)
    : m_place(std::move(place))
    , m_text(Trimmed(text))
{
}

std::string Line::Word()
{
    std::string word;
    if (m_text[m_at] != '"')
    {
        while (!AtEnd() && !IsBlank(m_text[m_at]))
        {
            word += m_text[m_at++];
        }
        SkipBlanks();
        return word;
    }
    for (++m_at;; ++m_at)
    {
        if (AtEnd())
        {
            Fail("a quote is not closed");
        }
        if (m_text[m_at] == '"' && m_text.substr(m_at, 2) != "\"\"")
        {
            break;
        }
        if (m_text[m_at] == '"')
        {
            ++m_at;
        }
        word += m_text[m_at];
    }
    ++m_at;
    SkipBlanks();
    return word;
}

bool Line::Take(std::string_view word)
{
    const auto end = m_at + word.size();
    if (m_text.compare(m_at, word.size(), word) != 0 || (end < m_text.size() && !IsBlank(m_text[end])))
    {
        return false;
    }
    m_at = end;
    SkipBlanks();
    return true;
}

std::string Line::Rest()
{
    auto rest = m_text.substr(m_at);
    m_at = m_text.size();
    return rest;
}

std::vector<std::string> Line::Cells()
{
    std::vector<std::string> cells;
    while (true)
    {
        SkipBlanks();
        auto cell = NextIsQuoted() ? Word() : std::string();
        // What stands between a closing quote and the next "|" belongs to the cell: its colours.
        const auto bar = std::min(m_text.find('|', m_at), m_text.size());
        const auto more = Trimmed(std::string_view(m_text).substr(m_at, bar - m_at));
        cell.append(cell.empty() || more.empty() ? "" : " ").append(more);
        cells.push_back(std::move(cell));
        m_at = bar;
        if (AtEnd())
        {
            return cells;
        }
        ++m_at;
    }
}

void Line::SkipBlanks()
{
    while (!AtEnd() && IsBlank(m_text[m_at]))
    {
        ++m_at;
    }
}

std::vector<Line> ReadLines(const std::string& file, std::string_view text)
{
    std::vector<Line> lines;
    std::istringstream in{std::string(text)};
    int number = 0;
    for (std::string raw; std::getline(in, raw);)
    {
        const Place place{file, ++number};
        if (!raw.empty() && raw.back() == '\r')
        {
            raw.pop_back();
        }
        const auto dated = WithDates(raw);
        const auto first = std::find_if_not(dated.begin(), dated.end(), IsBlank);
        if (first != dated.end() && *first == '|')
        {
            if (lines.empty())
            {
                throw SyntaxError(place, "a text block needs a line to belong to");
            }
            const auto begin = static_cast<std::size_t>(first - dated.begin()) + 1;
            lines.back().AddToBlock(std::string_view(dated).substr(std::min(begin + 1, dated.size())));
            continue;
        }
        const auto content = Trimmed(WithoutComment(dated));
        if (!content.empty())
        {
            lines.emplace_back(place, content);
        }
    }
    return lines;
}

} // namespace vellumo::player
