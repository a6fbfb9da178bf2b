// Dates of messages, of the index of tables and of databases, held against the C library's calendar; and OLE's numbers
// there and back. The first eight bytes of an input are a number, the whole of it is a text.
#include "environment/siss_date_time.h"
#include "environment/siss_environment.h"
#include "fuzz/oracle.h"
#include "host/fault.h"
#include "host/value.h"

#include <array>
#include <cmath>
#include <cstring>
#include <ctime>
#include <optional>
#include <regex>
#include <string>

namespace vellumo::fuzz
{
namespace
{

using host::Date;

// Seconds since the zero date; nothing for a day that the C library's calendar moves to another one.
std::optional<long long> Seconds(const std::array<int, 6>& parts)
{
    std::tm given{};
    given.tm_year = parts[0] - 1900;
    given.tm_mon = parts[1] - 1;
    given.tm_mday = parts[2];
    given.tm_hour = parts[3];
    given.tm_min = parts[4];
    given.tm_sec = parts[5];
    std::tm moved = given;
    const auto time = timegm(&moved);
    const bool same = moved.tm_year == given.tm_year && moved.tm_mon == given.tm_mon &&
                      moved.tm_mday == given.tm_mday && moved.tm_hour == given.tm_hour &&
                      moved.tm_min == given.tm_min && moved.tm_sec == given.tm_sec;
    constexpr long long zeroDate = -2209161600; // 30 December 1899
    return same && parts[0] >= 100 && parts[0] <= 9999 ? std::optional(time - zeroDate) : std::nullopt;
}

long long Seconds(const Date& date)
{
    const auto calendar = date.ToCalendar();
    const auto seconds =
        Seconds({calendar.year, calendar.month, calendar.day, calendar.hour, calendar.minute, calendar.second});
    Require(seconds.has_value(), "a date that there is");
    return *seconds;
}

// Each form with the places of year, month, day, hour, minute and second in it; 0 for what it has not.
struct Form
{
    std::regex pattern;
    std::array<std::size_t, 6> places;
};

const std::array<Form, 3>& MessageForms()
{
    constexpr const char* tail = R"((?:[T ](\d\d):(\d\d)(?::(\d\d)(?:\.\d+)?)?)?(?:[Zz]|[+-]\d\d(?::?\d\d)?)?)";
    static const std::array<Form, 3> forms = {{
        {std::regex(R"((\d{4})(\d\d)(\d\d)(?:(\d\d)(\d\d)(?:(\d\d))?)?)"), {1, 2, 3, 4, 5, 6}},
        {std::regex(std::string(R"((\d{4})([-/])(\d\d)\2(\d\d))") + tail), {1, 3, 4, 5, 6, 7}},
        {std::regex(std::string(R"((\d\d)([-/.])(\d\d)\2(\d{4}))") + tail), {4, 3, 1, 5, 6, 7}},
    }};
    return forms;
}

long long MessageSeconds(std::string text)
{
    text.erase(0, text.find_first_not_of(" \t\r\n"));
    text.erase(text.find_last_not_of(" \t\r\n") + 1);
    for (const auto& form : MessageForms())
    {
        std::smatch found;
        if (std::regex_match(text, found, form.pattern))
        {
            std::array<int, 6> parts{};
            for (std::size_t part = 0; part < parts.size(); ++part)
            {
                const auto& written = found[form.places[part]];
                parts[part] = written.matched ? std::stoi(written.str()) : 0;
            }
            return Seconds(parts).value_or(0);
        }
    }
    return 0;
}

void TryText(const std::string& text)
{
    const auto date = environment::ConvertSissDateTime(text);
    Require(Seconds(date) == MessageSeconds(text), "the date of a message");
    Require(environment::StoredDate(text) == date, "the date of a column");
    host::PassOver([&] { static_cast<void>(Seconds(environment::SISSEnvironment::ConvertToDateTime(text))); });
    host::PassOver([&] { static_cast<void>(Seconds(host::Value(text).ToDate())); });
    // What is readable is what is read.
    try
    {
        Require(environment::ReadableDate(text) == date, "a date that goes out");
    }
    catch (const host::Fault&)
    {
        Require(date.IsZero(), "a date that does not go out");
    }
}

// Times of day count forward from the whole day, also before the zero date, and are exact to the second.
void TryNumber(double number)
{
    const auto date = Date::FromOle(number);
    const auto seconds = Seconds(date);
    Require(Date::FromOle(date.ToOle()) == date, "a date as a number and back");
    const auto calendar = date.ToCalendar();
    Require(Date::FromCalendar(calendar.year, calendar.month, calendar.day, calendar.hour, calendar.minute,
                               calendar.second) == date,
            "a date as a calendar has it and back");
    if (number > -657434.0 && number < 2958465.0)
    {
        const double whole = std::trunc(number);
        const double expected = whole * 86400 + std::floor(std::fabs(number - whole) * 86400 + 0.0005);
        Require(std::fabs(static_cast<double>(seconds) - expected) <= 1, "the moment of a number");
    }
}

} // namespace
} // namespace vellumo::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace vellumo::fuzz;
    double number = 0;
    if (size >= sizeof number)
    {
        std::memcpy(&number, data, sizeof number);
        TryNumber(number);
        // Numbers near dates, which bytes alone hardly ever are.
        TryNumber(std::fmod(number, 3000000.0));
    }
    if (size <= 64)
    {
        TryText(std::string(View(data, size)));
    }
    return 0;
}
