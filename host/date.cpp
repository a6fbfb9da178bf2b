#include "host/date.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace vellumo::host
{
namespace
{

constexpr std::chrono::sys_days zeroDay =
    std::chrono::sys_days(std::chrono::year(1899) / std::chrono::December / std::chrono::day(30));
constexpr std::int32_t secondsPerDay = 24 * 60 * 60;
constexpr double firstOleDay = -657434.0; // 1 January 100
constexpr double lastOleDay = 2958465.0;  // 31 December 9999

} // namespace

std::optional<Date> Date::FromCalendar(int year, int month, int day, int hour, int minute, int second)
{
    const bool inRange = year >= 100 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 && hour >= 0 &&
                         hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60;
    if (!inRange)
    {
        return std::nullopt;
    }
    const auto date = std::chrono::year(year) / month / day;
    if (!date.ok())
    {
        return std::nullopt;
    }
    const auto days = static_cast<std::int32_t>((std::chrono::sys_days(date) - zeroDay).count());
    return Date(days, (hour * 60 + minute) * 60 + second);
}

Date Date::FromOle(double days)
{
    if (!(days > firstOleDay - 1 && days < lastOleDay + 1))
    {
        return {};
    }
    const double whole = std::trunc(days);
    // Milliseconds are cut off, as when a date is read from text: databases write the end of a day as 23:59:59.997, and
    // that is not the next day yet. Rounding to them first undoes what floating point does to whole seconds.
    const auto millisecond = std::llround(std::fabs(days - whole) * secondsPerDay * 1000);
    auto second = static_cast<std::int32_t>(millisecond / 1000);
    if (whole >= lastOleDay) // no day comes after it
    {
        second = std::min(second, secondsPerDay - 1);
    }
    return {static_cast<std::int32_t>(whole) + second / secondsPerDay, second % secondsPerDay};
}

double Date::ToOle() const
{
    const double fraction = static_cast<double>(m_second) / secondsPerDay;
    return m_day < 0 ? m_day - fraction : m_day + fraction;
}

Date::Calendar Date::ToCalendar() const
{
    const std::chrono::year_month_day date(zeroDay + std::chrono::days(m_day));
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            m_second / 3600,
            m_second / 60 % 60,
            m_second % 60};
}

std::string Date::ToSissText() const
{
    if (IsZero())
    {
        return {};
    }
    const Calendar calendar = ToCalendar();
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "%04d%02d%02d", calendar.year, calendar.month, calendar.day);
    return text.data();
}

std::string Date::ToDayText() const
{
    if (IsZero())
    {
        return {};
    }
    const Calendar calendar = ToCalendar();
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%02d/%02d/%04d", calendar.day, calendar.month, calendar.year);
    return text.data();
}

} // namespace vellumo::host
