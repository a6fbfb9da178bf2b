// Statements are written for SQL Server. This is where values become SQL texts, and where, for SQLite only, a
// statement is turned into what SQLite understands.
#pragma once

#include "host/utils.h"
#include "host/value.h"

#include <string>
#include <string_view>

namespace vellumo::norda
{

enum class Dialect
{
    SqlServer,
    Sqlite
};

// A literal: NULL, numbers plain, Booleans 1 and 0, dates as the database reads them whatever its language, texts
// quoted so that nothing in them can end the literal.
[[nodiscard]] std::string Literal(Dialect dialect, const host::Value& value);

// Puts the values in place of "{0}", "{1}" …, once, from left to right: what a value contains is never looked at
// again. A number without a value stays as it is.
[[nodiscard]] std::string PutIn(Dialect dialect, std::string_view sql, const host::Parameters& parameters);

// What SQLite makes of a Transact-SQL statement. Changes nothing inside quotes.
//   Norda..Comune         -> Norda.Comune (the shared database, attached under that name)
//   ISNULL(               -> IFNULL(
//   LEN(x)                -> LENGTH(RTRIM(x)): blanks at the end do not count
//   N'text'               -> 'text'
//   INT IDENTITY(1,1)     -> INTEGER
//   NVARCHAR(50)          -> NVARCHAR(50) COLLATE NOCASE, since SQL Server's texts compare without regard to case
//   CREATE VIEW           -> CREATE TEMP VIEW: only those may look into an attached database
// With `AsSqlServer`, and behind WHERE,
//   x = 'Text'            -> RTRIM(x) COLLATE NOCASE = 'Text', which no index serves
enum class Comparison
{
    Fast,       // blanks at the end count
    AsSqlServer // they do not
};
[[nodiscard]] std::string ForSqlite(std::string_view sql, Comparison comparison = Comparison::Fast);

// The same statement for a server on which the shared database has another name, so that one of the name `Norda` is
// never touched; a literal with letters that its code page may lack becomes one of Unicode.
//   Norda..Comune         -> shared..Comune
//   '…Đ…'                 -> N'…Đ…'
[[nodiscard]] std::string ForServer(std::string_view sql, std::string_view shared);

} // namespace vellumo::norda
