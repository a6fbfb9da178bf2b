// A value on its way between the library and the host: a database field, a record's column, an argument. Missing,
// empty and NULL are one state here (`IsNull`); it goes into the database as NULL and reads as "", 0 or False.
#pragma once

#include "host/date.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace vellumo::host
{

class Value
{
public:
    Value() = default;
    // What only converts to a Boolean, such as a pointer, is no value.
    template <std::same_as<bool> Boolean>
    Value(Boolean value)
        : m_value(value)
    {
    }
    Value(std::int32_t value)
        : m_value(value)
    {
    }
    Value(std::int64_t value)
        : m_value(value)
    {
    }
    Value(double value)
        : m_value(value)
    {
    }
    Value(Date value)
        : m_value(value)
    {
    }
    Value(std::string value)
        : m_value(std::move(value))
    {
    }
    Value(std::string_view value)
        : m_value(std::string(value))
    {
    }
    Value(const char* value)
        : m_value(std::string(value))
    {
    }

    Value(std::nullptr_t) = delete;

    ~Value() = default;
    // Copied by assignment: a variant of these alternatives believes that it always has a value, so that one whose
    // copy construction runs out of memory destroys a value that it does not have.
    Value(const Value& other)
        : Value()
    {
        m_value = other.m_value;
    }
    Value& operator=(const Value&) = default;
    Value(Value&&) = default;
    Value& operator=(Value&&) = default;

    // A date for a database column: the zero date is stored as NULL.
    [[nodiscard]] static Value DateOrNull(Date date);

    [[nodiscard]] bool IsNull() const noexcept { return std::holds_alternative<std::monostate>(m_value); }

    // Text in UTF-8, as it goes into a SISS message: null "", whole numbers in decimal, doubles with "." in their
    // shortest exact form, dates as `Date::ToSissText`, Booleans "True"/"False". Never faults.
    [[nodiscard]] std::string ToText() const;

    // Whole number: null 0, True -1, doubles and numeric texts rounded half to even. Faults on a text that is no
    // number and on what does not fit into 32 bits.
    [[nodiscard]] std::int32_t ToInteger() const;

    // Number: null 0, True -1, dates their OLE number. Faults on a text that is no number.
    [[nodiscard]] double ToNumber() const;

    // Null False, numbers "not 0", texts "True"/"False" in any case or a number. Faults on any other text.
    [[nodiscard]] bool ToBoolean() const;

    // Null and "" the zero date; numbers are OLE dates; texts "yyyy-mm-dd" with or without " hh:mm:ss" (database
    // form). Faults on any other text.
    [[nodiscard]] Date ToDate() const;

    // A text without the blanks at its end, any other value as it is.
    [[nodiscard]] Value WithoutPadding() &&;

    // For the edges, which convert alternative by alternative.
    using Storage = std::variant<std::monostate, bool, std::int32_t, std::int64_t, double, Date, std::string>;
    [[nodiscard]] const Storage& Get() const noexcept { return m_value; }

    bool operator==(const Value&) const = default;

private:
    Storage m_value;
};

} // namespace vellumo::host
