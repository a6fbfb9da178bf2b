// A calendar day with a time of day, without zone: what the host's records and the SISS messages call a date.
// The zero date is 30 December 1899, midnight (the zero of OLE automation); it stands for "no date".
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>

namespace vellumo::host
{

class Date
{
public:
    struct Calendar
    {
        int year;
        int month;
        int day;
        int hour;
        int minute;
        int second;
    };

    constexpr Date() = default;

    // Empty when the day does not exist, the time of day is out of range, or the year is not within 100..9999.
    [[nodiscard]] static std::optional<Date> FromCalendar(int year, int month, int day, int hour = 0, int minute = 0,
                                                          int second = 0);

    // OLE automation date: whole days since 30 December 1899, the fraction being the time of day (also for days
    // before it, where the fraction counts forward from the whole day).
    [[nodiscard]] static Date FromOle(double days);
    [[nodiscard]] double ToOle() const;

    [[nodiscard]] bool IsZero() const noexcept { return m_day == 0 && m_second == 0; }
    [[nodiscard]] Calendar ToCalendar() const;

    // Days since the zero date, time of day dropped; the difference of two is the number of midnights between them.
    [[nodiscard]] std::int32_t DayNumber() const noexcept { return m_day; }

    // The form of dates in SISS messages: "yyyymmdd", "" for the zero date. The time of day is not sent.
    [[nodiscard]] std::string ToSissText() const;
    // As people here write a day: "22/11/2026", "" for the zero date.
    [[nodiscard]] std::string ToDayText() const;

    auto operator<=>(const Date&) const = default; // NOLINT(modernize-use-nullptr)

private:
    constexpr Date(std::int32_t day, std::int32_t second)
        : m_day(day)
        , m_second(second)
    {
    }

    std::int32_t m_day = 0;    // since 30 December 1899
    std::int32_t m_second = 0; // of the day
};

} // namespace vellumo::host
