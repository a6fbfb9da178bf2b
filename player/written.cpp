#include "player/written.h"

#include "host/clock.h"

#include <algorithm>
#include <cctype>

namespace vellumo::player
{
namespace
{

constexpr std::size_t longestQuoted = 1500;
constexpr double quarterOfAnHour = 1.0 / 96;

std::string Digits(int number, std::size_t width)
{
    const auto text = std::to_string(number);
    return std::string(width - std::min(width, text.size()), '0') + text;
}

} // namespace

void Expect(const std::string& what, const std::string& expected, const std::string& seen)
{
    if (expected != seen)
    {
        throw Differs(what + "\n  expected: " + Quoted(expected) + "\n  seen:     " + Quoted(seen));
    }
}

std::string Quoted(const std::string& text)
{
    std::string out = "\"";
    for (const char c : text.substr(0, longestQuoted))
    {
        out += c == '\r' ? "\\r" : c == '\n' ? "\\n" : std::string(1, c);
    }
    return out + (text.size() > longestQuoted ? "…\"" : "\"");
}

std::string Joined(const std::vector<std::string>& parts, std::string_view between)
{
    std::string text;
    for (std::size_t i = 0; i < parts.size(); ++i)
    {
        text.append(i == 0 ? "" : between).append(parts[i]);
    }
    return text;
}

std::string Numbered(std::string text, int n)
{
    constexpr std::string_view placeholder = "{n}";
    for (auto at = text.find(placeholder); at != std::string::npos; at = text.find(placeholder))
    {
        text.replace(at, placeholder.size(), std::to_string(n));
    }
    return text;
}

std::string FileName(std::string title)
{
    std::replace_if(
        title.begin(), title.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '-');
    return title;
}

std::string Trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n";
    const auto first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? ""
                                           : std::string(text.substr(first, text.find_last_not_of(blanks) + 1 - first));
}

std::string WithoutReturns(std::string text, std::string_view lineBreak)
{
    std::erase(text, '\r');
    for (auto at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + lineBreak.size()))
    {
        text.replace(at, 1, lineBreak);
    }
    return text;
}

std::string BooleanText(bool value)
{
    return value ? "True" : "False";
}

std::string DayText(const host::Date& date)
{
    const auto day = date.ToCalendar();
    return Digits(day.year, 4) + '-' + Digits(day.month, 2) + '-' + Digits(day.day, 2);
}

std::string ValueText(const host::Value& value)
{
    if (value.IsNull())
    {
        return "NULL";
    }
    const auto* const date = std::get_if<host::Date>(&value.Get());
    if (date == nullptr)
    {
        return value.ToText();
    }
    const auto time = date->ToCalendar();
    const auto age = host::SystemClock().Now().ToOle() - date->ToOle();
    if (time.hour == 0 && time.minute == 0 && time.second == 0)
    {
        return DayText(*date);
    }
    return age >= 0 && age < quarterOfAnHour ? "now"
                                             : DayText(*date) + ' ' + Digits(time.hour, 2) + ':' +
                                                   Digits(time.minute, 2) + ':' + Digits(time.second, 2);
}

} // namespace vellumo::player
