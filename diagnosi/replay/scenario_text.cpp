#include "diagnosi/replay/scenario_text.h"

#include "host/text.h"

#include <algorithm>

namespace vellumo::diagnosi
{
namespace
{

std::string Doubled(std::string_view text, char mark)
{
    std::string doubled(1, mark);
    for (const char character : text)
    {
        doubled.append(character == mark ? 2 : 1, character);
    }
    return doubled + mark;
}

std::string InOneLine(std::string_view text)
{
    std::string line(text);
    std::ranges::replace_if(
        line, [](char character) { return host::blanks.find(character) != std::string_view::npos; }, ' ');
    return line;
}

} // namespace

void ScenarioText::Line(std::size_t level, std::string_view text)
{
    m_text.append(2 * level, ' ').append(text) += '\n';
}

void ScenarioText::Comment(std::size_t level, std::string_view text)
{
    Line(level, "# " + InOneLine(text));
}

void ScenarioText::Block(std::size_t level, std::string_view text)
{
    for (bool more = true; more;)
    {
        const auto end = text.find('\n');
        auto line = text.substr(0, end);
        line.remove_suffix(line.ends_with('\r') ? 1 : 0);
        Line(level, "| " + std::string(line));
        more = end != std::string_view::npos;
        text.remove_prefix(more ? end + 1 : text.size());
    }
}

void ScenarioText::Sql(std::string_view statement, std::string_view values)
{
    Line(1, "sql " + std::string(statement));
    if (!values.empty())
    {
        Block(2, values); // behind "|" no quotation mark opens a text, and no "#" a comment
    }
}

std::string InQuotes(std::string_view text)
{
    return Doubled(InOneLine(text), '"');
}

std::string Literal(std::string_view text)
{
    return Doubled(InOneLine(text), '\'');
}

std::string DateLiteral(std::string_view date)
{
    constexpr std::size_t digits = 8;
    if (date.size() != digits || !std::ranges::all_of(date, host::IsDigit))
    {
        return "NULL";
    }
    return Literal(std::string(date.substr(0, 4))
                       .append("-")
                       .append(date.substr(4, 2))
                       .append("-")
                       .append(date.substr(6, 2))
                       .append(" 00:00:00"));
}

} // namespace vellumo::diagnosi
