#include "host/value.h"

#include "host/fault.h"
#include "host/text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string_view>

namespace vellumo::host
{
namespace
{

std::optional<double> ParseNumber(std::string_view text)
{
    text = Trimmed(text);
    if (text.starts_with('+'))
    {
        text.remove_prefix(1);
    }
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool whole = error == std::errc() && end == text.data() + text.size() && std::isfinite(number);
    return whole ? std::optional(number) : std::nullopt;
}

[[noreturn]] void ThrowNotA(std::string_view what, std::string_view text)
{
    throw Fault("Il valore \"" + std::string(text) + "\" non è " + std::string(what) + ".");
}

double NumberOf(const std::string& text)
{
    const auto number = ParseNumber(text);
    if (!number)
    {
        ThrowNotA("un numero", text);
    }
    return *number;
}

std::int32_t Narrow(double number)
{
    const double rounded = std::nearbyint(number); // half to even
    if (!(rounded >= std::numeric_limits<std::int32_t>::min() && rounded <= std::numeric_limits<std::int32_t>::max()))
    {
        throw Fault("Il valore numerico è fuori dai limiti di un intero a 32 bit.");
    }
    return static_cast<std::int32_t>(rounded);
}

// Reads exactly `digits` digits at `position` and steps over them.
std::optional<int> TakeDigits(std::string_view text, std::size_t& position, std::size_t digits)
{
    int number = 0;
    if (position + digits > text.size())
    {
        return std::nullopt;
    }
    const auto [end, error] = std::from_chars(text.data() + position, text.data() + position + digits, number);
    if (error != std::errc() || end != text.data() + position + digits || number < 0)
    {
        return std::nullopt;
    }
    position += digits;
    return number;
}

std::optional<Date> ParseDatabaseDate(std::string_view text)
{
    // "yyyy-mm-dd" or "yyyy-mm-dd hh:mm:ss", with "T" or a blank between and a fraction of a second that is dropped.
    constexpr std::array<char, 6> separators = {'-', '-', ' ', ':', ':', '.'};
    std::array<int, 6> parts = {0, 1, 1, 0, 0, 0};
    std::size_t position = 0;
    std::size_t count = 0;
    while (count < parts.size())
    {
        const auto number = TakeDigits(text, position, count == 0 ? 4 : 2);
        if (!number)
        {
            return std::nullopt;
        }
        parts.at(count) = *number;
        if (position == text.size())
        {
            ++count;
            break;
        }
        const char separator = text[position] == 'T' ? ' ' : text[position];
        if (separator != separators.at(count))
        {
            return std::nullopt;
        }
        ++position;
        ++count;
    }
    if (count != 3 && count != 6)
    {
        return std::nullopt;
    }
    return Date::FromCalendar(parts[0], parts[1], parts[2], parts[3], parts[4], parts[5]);
}

template <class... Cases>
struct Overloaded : Cases...
{
    using Cases::operator()...;
};

template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

} // namespace

Value Value::DateOrNull(Date date)
{
    return date.IsZero() ? Value() : Value(date);
}

Value Value::WithoutPadding() &&
{
    if (auto* const text = std::get_if<std::string>(&m_value))
    {
        text->erase(text->find_last_not_of(' ') + 1);
    }
    return std::move(*this);
}

std::string Value::ToText() const
{
    return std::visit(
        Overloaded{
            [](std::monostate) { return std::string(); },
            [](bool value) { return std::string(value ? "True" : "False"); },
            [](Date value) { return value.ToSissText(); },
            [](const std::string& value) { return value; },
            [](auto number)
            {
                std::array<char, 400> text{};
                const auto end = [&]
                {
                    if constexpr (std::is_same_v<decltype(number), double>)
                    {
                        return std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed)
                            .ptr;
                    }
                    else
                    {
                        return std::to_chars(text.data(), text.data() + text.size(), number).ptr;
                    }
                }();
                return std::string(text.data(), end);
            },
        },
        m_value);
}

std::int32_t Value::ToInteger() const
{
    return Narrow(ToNumber());
}

double Value::ToNumber() const
{
    return std::visit(
        Overloaded{
            [](std::monostate) { return 0.0; },
            [](bool value) { return value ? -1.0 : 0.0; },
            [](Date value) { return value.ToOle(); },
            [](const std::string& value) { return NumberOf(value); },
            [](auto value) { return static_cast<double>(value); },
        },
        m_value);
}

bool Value::ToBoolean() const
{
    return std::visit(
        Overloaded{
            [](std::monostate) { return false; },
            [](Date value) { return !value.IsZero(); },
            [](const std::string& value)
            {
                if (EqualsIgnoringCase(value, "True"))
                {
                    return true;
                }
                return !EqualsIgnoringCase(value, "False") && NumberOf(value) != 0;
            },
            [](auto value) { return value != decltype(value){}; },
        },
        m_value);
}

Date Value::ToDate() const
{
    return std::visit(
        Overloaded{
            [](std::monostate) { return Date(); },
            [](bool value) { return Date::FromOle(value ? -1 : 0); },
            [](Date value) { return value; },
            [](const std::string& value)
            {
                const auto text = Trimmed(value);
                const auto date = text.empty() ? std::optional(Date()) : ParseDatabaseDate(text);
                if (!date)
                {
                    ThrowNotA("una data", value);
                }
                return *date;
            },
            [](auto number) { return Date::FromOle(static_cast<double>(number)); },
        },
        m_value);
}

} // namespace vellumo::host
