#include "player/written.h"

#include "host/clock.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iomanip>
#include <iterator>
#include <sstream>
#include <utility>

namespace vellumo::player
{
namespace
{

constexpr std::size_t longestQuoted = 1500;
constexpr double quarterOfAnHour = 1.0 / 96;

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
    const auto shown = Replaced(Replaced(text.substr(0, longestQuoted), "\r", "\\r"), "\n", "\\n");
    return '"' + shown + (text.size() > longestQuoted ? "…\"" : "\"");
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

std::string FileName(std::string title)
{
    std::replace_if(
        title.begin(), title.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '-');
    return title;
}

std::string Replaced(std::string text, std::string_view part, std::string_view instead)
{
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + instead.size()))
    {
        text.replace(at, part.size(), instead);
    }
    return text;
}

std::string BooleanText(bool value)
{
    return value ? "True" : "False";
}

std::string DateText(const host::Date& date, const char* form)
{
    const auto [year, month, day, hour, minute, second] = date.ToCalendar();
    std::tm time{};
    time.tm_year = year - 1900;
    time.tm_mon = month - 1;
    time.tm_mday = day;
    time.tm_hour = hour;
    time.tm_min = minute;
    time.tm_sec = second;
    std::ostringstream text;
    text << std::put_time(&time, form);
    return text.str();
}

std::string ValueText(const host::Value& value)
{
    const auto* const date = std::get_if<host::Date>(&value.Get());
    if (date == nullptr)
    {
        return value.IsNull() ? "NULL" : value.ToText();
    }
    const auto age = host::SystemClock().Now().ToOle() - date->ToOle();
    const bool isDay = *date == host::Date::FromOle(date->DayNumber());
    return isDay                               ? DateText(*date, dayForm)
           : age >= 0 && age < quarterOfAnHour ? "now"
                                               : DateText(*date, "%Y-%m-%d %H:%M:%S");
}

std::vector<std::filesystem::path> EntriesOf(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> entries;
    std::error_code none;
    for (const auto& entry : std::filesystem::directory_iterator(folder, none))
    {
        entries.push_back(entry.path());
    }
    const auto rank = [](const auto& path) { return std::pair(std::atoi(path.filename().string().c_str()), path); };
    std::sort(entries.begin(), entries.end(),
              [&](const auto& left, const auto& right) { return rank(left) < rank(right); });
    return entries;
}

std::string FileText(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    if (!in)
    {
        throw Differs(file.string() + ": the file cannot be read");
    }
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace vellumo::player
