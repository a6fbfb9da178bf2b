#include "simulator/norda/odbc.h"

#include "host/fault.h"
#include "host/text.h"
#include "simulator/norda/database_fault.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

namespace vellumo::norda::odbc
{

namespace
{

// The whole text of a column, part by part; empty for NULL.
template <class Character>
std::optional<std::vector<Character>> ReadCharacters(const Statement& statement, SQLUSMALLINT column, SQLSMALLINT type)
{
    std::vector<Character> all;
    std::array<Character, 1024> part;
    for (;;)
    {
        SQLLEN bytes = 0;
        const auto result = SQLGetData(statement.Get(), column, type, part.data(),
                                       static_cast<SQLLEN>(part.size() * sizeof(Character)), &bytes);
        if (result == SQL_NO_DATA)
        {
            return all;
        }
        Check(result, SQL_HANDLE_STMT, statement.Get());
        if (bytes == SQL_NULL_DATA)
        {
            return std::nullopt;
        }
        const bool whole = result != SQL_SUCCESS_WITH_INFO;
        const auto count = whole ? static_cast<std::size_t>(bytes) / sizeof(Character) : part.size() - 1;
        all.insert(all.end(), part.begin(), part.begin() + static_cast<std::ptrdiff_t>(count));
        if (whole)
        {
            return all;
        }
    }
}

host::Value ReadText(const Statement& statement, SQLUSMALLINT column, Interface texts)
{
    if (texts == Interface::Wide)
    {
        const auto text = ReadCharacters<SQLWCHAR>(statement, column, SQL_C_WCHAR);
        return text ? host::Value(Narrow(text->data(), text->size())) : host::Value();
    }
    const auto text = ReadCharacters<char>(statement, column, SQL_C_CHAR);
    return text ? host::Value(std::string(text->begin(), text->end())) : host::Value();
}

std::string Message(SQLSMALLINT handleType, SQLHANDLE handle, Interface texts)
{
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    if (texts == Interface::Wide)
    {
        std::array<SQLWCHAR, 6> state{};
        std::array<SQLWCHAR, 1024> text{};
        const auto result = SQLGetDiagRecW(handleType, handle, 1, state.data(), &native, text.data(),
                                           static_cast<SQLSMALLINT>(text.size()), &length);
        const auto shown = std::min(static_cast<std::size_t>(length), text.size() - 1);
        return SQL_SUCCEEDED(result) ? Narrow(text.data(), shown) : std::string();
    }
    std::array<SQLCHAR, 6> state{};
    std::array<SQLCHAR, 2048> text{};
    const auto result = SQLGetDiagRec(handleType, handle, 1, state.data(), &native, text.data(),
                                      static_cast<SQLSMALLINT>(text.size()), &length);
    const auto shown = std::min(static_cast<std::size_t>(length), text.size() - 1);
    return SQL_SUCCEEDED(result) ? std::string(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(shown))
                                 : std::string();
}

template <class Number>
bool ReadFixed(const Statement& statement, SQLUSMALLINT column, SQLSMALLINT type, Number& number)
{
    SQLLEN length = 0;
    Check(SQLGetData(statement.Get(), column, type, &number, sizeof number, &length), SQL_HANDLE_STMT, statement.Get());
    return length != SQL_NULL_DATA;
}

host::Value ReadDate(const Statement& statement, SQLUSMALLINT column)
{
    TIMESTAMP_STRUCT day{};
    if (!ReadFixed(statement, column, SQL_C_TYPE_TIMESTAMP, day))
    {
        return {};
    }
    const auto date = host::Date::FromCalendar(day.year, day.month, day.day, day.hour, day.minute, day.second);
    if (!date)
    {
        throw DatabaseFault("La data letta dal database non esiste.");
    }
    return *date;
}

} // namespace

std::vector<SQLWCHAR> Wide(std::string_view text)
{
    std::vector<SQLWCHAR> wide;
    wide.reserve(text.size() + 1);
    std::size_t at = 0;
    while (at < text.size())
    {
        const char32_t taken = host::TakeCharacter(text, at);
        const char32_t c = taken == host::notUtf8 ? 0xFFFD : taken;
        if (c >= 0x10000)
        {
            wide.push_back(static_cast<SQLWCHAR>(0xD800 + ((c - 0x10000) >> 10)));
            wide.push_back(static_cast<SQLWCHAR>(0xDC00 + ((c - 0x10000) & 0x3FF)));
        }
        else
        {
            wide.push_back(static_cast<SQLWCHAR>(c));
        }
    }
    wide.push_back(0);
    return wide;
}

std::string Narrow(const SQLWCHAR* text, std::size_t length)
{
    std::string out;
    for (std::size_t i = 0; i < length; ++i)
    {
        char32_t c = static_cast<char16_t>(text[i]);
        if (c >= 0xD800 && c < 0xDC00 && i + 1 < length)
        {
            c = 0x10000 + ((c - 0xD800) << 10) + (static_cast<char16_t>(text[++i]) - 0xDC00U);
        }
        host::AppendCharacter(c, out);
    }
    return out;
}

void Check(SQLRETURN result, SQLSMALLINT handleType, SQLHANDLE handle, Interface texts)
{
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA)
    {
        const auto message = Message(handleType, handle, texts);
        throw DatabaseFault(message.empty() ? "Errore del database." : message);
    }
}

void Execute(const Statement& statement, const std::string& sql, Interface texts)
{
    if (texts == Interface::Wide)
    {
        auto text = Wide(sql);
        Check(SQLExecDirectW(statement.Get(), text.data(), SQL_NTS), SQL_HANDLE_STMT, statement.Get());
        return;
    }
    auto* const text = reinterpret_cast<SQLCHAR*>(const_cast<char*>(sql.data())); // ODBC only reads it
    Check(SQLExecDirect(statement.Get(), text, static_cast<SQLINTEGER>(sql.size())), SQL_HANDLE_STMT, statement.Get(),
          texts);
}

std::vector<Column> Columns(const Statement& statement, Interface texts)
{
    SQLSMALLINT count = 0;
    Check(SQLNumResultCols(statement.Get(), &count), SQL_HANDLE_STMT, statement.Get());
    std::vector<Column> columns(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < columns.size(); ++i)
    {
        const auto describe = [&](auto how, auto& name)
        {
            SQLSMALLINT length = 0;
            SQLSMALLINT digits = 0;
            SQLSMALLINT nullable = 0;
            SQLULEN size = 0;
            Check(how(statement.Get(), static_cast<SQLUSMALLINT>(i + 1), name.data(),
                      static_cast<SQLSMALLINT>(name.size()), &length, &columns[i].type, &size, &digits, &nullable),
                  SQL_HANDLE_STMT, statement.Get(), texts);
            return static_cast<std::size_t>(length);
        };
        if (texts == Interface::Wide)
        {
            std::array<SQLWCHAR, 256> name;
            const auto length = describe(SQLDescribeColW, name);
            columns[i].name = Narrow(name.data(), length);
        }
        else
        {
            std::array<SQLCHAR, 512> name;
            const auto length = describe(SQLDescribeCol, name);
            columns[i].name.assign(name.begin(), name.begin() + static_cast<std::ptrdiff_t>(length));
        }
    }
    return columns;
}

host::Value Read(const Statement& statement, std::size_t column, SQLSMALLINT type, Interface texts)
{
    const auto position = static_cast<SQLUSMALLINT>(column + 1);
    switch (type)
    {
    case SQL_BIT:
    {
        unsigned char bit = 0;
        return ReadFixed(statement, position, SQL_C_BIT, bit) ? host::Value(bit != 0) : host::Value();
    }
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    {
        SQLINTEGER number = 0;
        return ReadFixed(statement, position, SQL_C_SLONG, number) ? host::Value(static_cast<std::int32_t>(number))
                                                                   : host::Value();
    }
    case SQL_BIGINT:
    {
        SQLBIGINT number = 0;
        return ReadFixed(statement, position, SQL_C_SBIGINT, number) ? host::Value(static_cast<std::int64_t>(number))
                                                                     : host::Value();
    }
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
    case SQL_DECIMAL:
    case SQL_NUMERIC:
    {
        double number = 0;
        return ReadFixed(statement, position, SQL_C_DOUBLE, number) ? host::Value(number) : host::Value();
    }
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
        return ReadDate(statement, position);
    default:
        return ReadText(statement, position, texts);
    }
}

} // namespace vellumo::norda::odbc
