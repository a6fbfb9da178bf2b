#include "simulator/norda/program/print_table.h"

#include "host/text.h"

#include <algorithm>
#include <ostream>
#include <vector>

namespace vellumo::norda
{
namespace
{

std::string TwoDigits(int number)
{
    return (number < 10 ? "0" : "") + std::to_string(number);
}

} // namespace

std::string ShownText(const host::Value& value)
{
    if (value.IsNull())
    {
        return "-";
    }
    if (const auto* const flag = std::get_if<bool>(&value.Get()))
    {
        return *flag ? "sì" : "no";
    }
    if (const auto* const date = std::get_if<host::Date>(&value.Get()))
    {
        const auto day = date->ToCalendar();
        const auto text = TwoDigits(day.day) + '/' + TwoDigits(day.month) + '/' + std::to_string(day.year);
        const bool withTime = day.hour != 0 || day.minute != 0 || day.second != 0;
        return withTime ? text + ' ' + TwoDigits(day.hour) + ':' + TwoDigits(day.minute) : text;
    }
    return value.ToText();
}

void PrintTable(std::ostream& out, host::Recordset& rows)
{
    std::vector<std::vector<std::string>> lines(1);
    for (std::size_t i = 0; i < rows.ColumnCount(); ++i)
    {
        lines.front().push_back(rows.ColumnName(i));
    }
    for (; !rows.IsAtEnd(); rows.MoveNext())
    {
        auto& line = lines.emplace_back();
        for (std::size_t i = 0; i < rows.ColumnCount(); ++i)
        {
            line.push_back(ShownText(rows.Field(i)));
        }
    }
    if (lines.size() == 1)
    {
        return;
    }
    std::vector<std::size_t> widths(lines.front().size());
    for (const auto& line : lines)
    {
        for (std::size_t i = 0; i < line.size(); ++i)
        {
            widths[i] = std::max(widths[i], host::CharacterCount(line[i]));
        }
    }
    for (const auto& line : lines)
    {
        out << ' ';
        for (std::size_t i = 0; i < line.size(); ++i)
        {
            out << ' ' << line[i] << std::string(widths[i] - host::CharacterCount(line[i]) + 1, ' ');
        }
        out << '\n';
    }
}

} // namespace vellumo::norda
