// What SQL Server's columns give: the types of the columns that a practice of real hosts has where ours has plain ones,
// and how ADO hands their values over. Of the strict host.
#pragma once

#include "host/value.h"

#include <cstddef>
#include <string_view>

namespace vellumo::norda
{

enum class SqlType
{
    Plain, // as the driver reports it
    TinyInt,
    SmallInt,
    BigInt,
    Decimal,
    Money,
    Real,
    Float,
    Date,             // older providers give it as text, "2011-03-07"
    DateTime2,        // and this one as "2011-03-07 00:00:00.0000000"
    Char,             // padded with blanks
    Long,             // NTEXT, which can be read once in each row
    UniqueIdentifier, // "{…}"
    RowVersion        // bytes
};

struct ColumnType
{
    std::string_view name; // of the column in a result, in any case
    SqlType type = SqlType::Plain;
    std::size_t width = 0; // characters, of a Char
};

// What a column of that name is at the strict host.
[[nodiscard]] ColumnType TypeOfColumn(std::string_view name);

// The value as such a column gives it, as far as a value can tell: a whole number is one whatever its width.
[[nodiscard]] host::Value ShapedAs(const ColumnType& type, const host::Value& value);

} // namespace vellumo::norda
