#include "environment/siss_date_time.h"

#include "host/fault.h"
#include "host/text.h"

#include <array>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace vellumo::environment
{
namespace
{

using host::Date;

// Takes a text apart from the left; each member steps over what it has read, or leaves the position alone.
class Scanner
{
public:
    explicit Scanner(std::string_view text)
        : m_rest(text)
    {
    }

    [[nodiscard]] bool AtEnd() const { return m_rest.empty(); }

    std::optional<int> Digits(std::size_t count)
    {
        int number = 0;
        if (m_rest.size() < count)
        {
            return std::nullopt;
        }
        for (const char character : m_rest.substr(0, count))
        {
            if (!host::IsDigit(character))
            {
                return std::nullopt;
            }
            number = number * 10 + (character - '0');
        }
        m_rest.remove_prefix(count);
        return number;
    }

    // One of the characters, or 0.
    char OneOf(std::string_view characters)
    {
        if (m_rest.empty() || characters.find(m_rest.front()) == std::string_view::npos)
        {
            return 0;
        }
        const char found = m_rest.front();
        m_rest.remove_prefix(1);
        return found;
    }

    [[nodiscard]] std::size_t LeadingDigits() const
    {
        std::size_t count = 0;
        while (count < m_rest.size() && host::IsDigit(m_rest[count]))
        {
            ++count;
        }
        return count;
    }

private:
    std::string_view m_rest;
};

struct Time
{
    int hour = 0;
    int minute = 0;
    int second = 0;
};

std::optional<Date> Make(std::optional<int> year, std::optional<int> month, std::optional<int> day, Time time = {})
{
    return year && month && day ? Date::FromCalendar(*year, *month, *day, time.hour, time.minute, time.second)
                                : std::nullopt;
}

std::optional<Date> ReadRunTogether(std::string_view text)
{
    if (text.size() != 8 && text.size() != 12 && text.size() != 14)
    {
        return std::nullopt;
    }
    Scanner scanner(text);
    const auto year = scanner.Digits(4);
    const auto month = scanner.Digits(2);
    const auto day = scanner.Digits(2);
    const Time time = {scanner.Digits(2).value_or(0), scanner.Digits(2).value_or(0), scanner.Digits(2).value_or(0)};
    return Make(year, month, day, time);
}

// hh:mm[:ss[.f]]
std::optional<Time> ReadTime(Scanner& scanner)
{
    const auto hour = scanner.Digits(2);
    const bool colon = scanner.OneOf(":") != 0;
    const auto minute = scanner.Digits(2);
    if (!hour || !colon || !minute)
    {
        return std::nullopt;
    }
    Time time = {*hour, *minute, 0};
    if (scanner.OneOf(":") != 0)
    {
        const auto second = scanner.Digits(2);
        if (!second)
        {
            return std::nullopt;
        }
        time.second = *second;
        if (scanner.OneOf(".") != 0)
        {
            const std::size_t digits = scanner.LeadingDigits();
            if (digits == 0)
            {
                return std::nullopt;
            }
            for (std::size_t digit = 0; digit < digits; ++digit)
            {
                scanner.OneOf("0123456789");
            }
        }
    }
    return time;
}

// Z, +hh, +hhmm or +hh:mm, or nothing.
bool SkipZone(Scanner& scanner)
{
    if (scanner.OneOf("Zz") == 0 && scanner.OneOf("+-") != 0)
    {
        const bool hours = scanner.Digits(2).has_value();
        const bool colon = scanner.OneOf(":") != 0;
        return hours && (scanner.Digits(2).has_value() || !colon);
    }
    return true;
}

std::optional<Date> ReadSeparated(std::string_view text)
{
    Scanner scanner(text);
    const bool yearFirst = scanner.LeadingDigits() == 4;
    const auto first = scanner.Digits(yearFirst ? 4 : 2);
    const char separator = scanner.OneOf(yearFirst ? "-/" : "-/.");
    const auto month = scanner.Digits(2);
    const bool same = separator != 0 && scanner.OneOf({&separator, 1}) != 0;
    const auto last = scanner.Digits(yearFirst ? 2 : 4);
    if (!same)
    {
        return std::nullopt;
    }
    Time time;
    if (scanner.OneOf("T ") != 0)
    {
        const auto read = ReadTime(scanner);
        if (!read)
        {
            return std::nullopt;
        }
        time = *read;
    }
    if (!SkipZone(scanner) || !scanner.AtEnd())
    {
        return std::nullopt;
    }
    return yearFirst ? Make(first, month, last, time) : Make(last, month, first, time);
}

std::optional<Date> Read(std::string_view text)
{
    text = host::Trimmed(text);
    const bool onlyDigits = text.find_first_not_of("0123456789") == std::string_view::npos;
    return onlyDigits ? ReadRunTogether(text) : ReadSeparated(text);
}

std::string DayText(const host::Value& value)
{
    return std::holds_alternative<std::string>(value.Get()) ? value.ToText() : value.ToDate().ToSissText();
}

} // namespace

Date ConvertSissDateTime(std::string_view text) noexcept
{
    return Read(text).value_or(Date());
}

Date StoredDate(const host::Value& value)
{
    return ConvertSissDateTime(DayText(value));
}

Date ReadableDate(const host::Value& value)
{
    const std::string text = DayText(value);
    const auto date = Read(text);
    if (!date && text.find_first_not_of(" \t\r\n0-/.:T") != std::string::npos)
    {
        throw host::Fault("La data \"" + text + "\" non si può leggere.");
    }
    return date.value_or(Date());
}

std::string Stamp(host::Date time)
{
    const auto calendar = time.ToCalendar();
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d.%02d.%02d", calendar.year, calendar.month,
                  calendar.day, calendar.hour, calendar.minute, calendar.second);
    return text.data();
}

std::optional<host::Date> TimeOfStamp(std::string_view text)
{
    constexpr std::string_view pattern = "0000-00-00 00.00.00";
    if (text.size() != pattern.size())
    {
        return std::nullopt;
    }
    std::array<int, 6> parts{};
    std::size_t part = 0;
    for (std::size_t i = 0; i < pattern.size(); ++i)
    {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (pattern[i] == '0' ? !isDigit : text[i] != pattern[i])
        {
            return std::nullopt;
        }
        part += isDigit ? 0 : 1;
        parts.at(part) = isDigit ? parts.at(part) * 10 + (text[i] - '0') : 0;
    }
    return host::Date::FromCalendar(parts[0], parts[1], parts[2], parts[3], parts[4], parts[5]);
}

} // namespace vellumo::environment
