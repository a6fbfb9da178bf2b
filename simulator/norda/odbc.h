// ODBC with owners: an environment, a connection, a statement, each freed once. A call that fails is a fault with the
// driver's text.
//
// Texts are UTF-8 here. What they are at the driver depends on how it was built: most take UTF-16 through the wide
// interface. SQLite's on Linux has none, and what the driver manager makes of a wide text loses all that is not
// Latin-1; it takes UTF-8 as it is through the narrow one.
#pragma once

#include "host/value.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#endif
#define SQL_NOUNICODEMAP // which of the two interfaces is called stands in each call's name
#include <sql.h>
#include <sqlext.h>

namespace vellumo::norda::odbc
{

[[nodiscard]] std::vector<SQLWCHAR> Wide(std::string_view text); // ends with a zero
[[nodiscard]] std::string Narrow(const SQLWCHAR* text, std::size_t length);

enum class Interface
{
    Wide,
    Narrow
};

// One ODBC handle of the kind that `Type` names.
template <SQLSMALLINT Type>
class Handle
{
public:
    explicit Handle(SQLHANDLE parent) { SQLAllocHandle(Type, parent, &m_handle); }
    ~Handle()
    {
        if (m_handle != SQL_NULL_HANDLE)
        {
            SQLFreeHandle(Type, m_handle);
        }
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    [[nodiscard]] SQLHANDLE Get() const noexcept { return m_handle; }

private:
    SQLHANDLE m_handle = SQL_NULL_HANDLE;
};

using Environment = Handle<SQL_HANDLE_ENV>;
using Connection = Handle<SQL_HANDLE_DBC>;
using Statement = Handle<SQL_HANDLE_STMT>;

// Throws host::Fault when `result` is a failure.
void Check(SQLRETURN result, SQLSMALLINT handleType, SQLHANDLE handle, Interface texts = Interface::Wide);

void Execute(const Statement& statement, const std::string& sql, Interface texts);

struct Column
{
    std::string name;
    SQLSMALLINT type = 0;
};

[[nodiscard]] std::vector<Column> Columns(const Statement& statement, Interface texts);
// Columns must be read in order.
[[nodiscard]] host::Value Read(const Statement& statement, std::size_t column, SQLSMALLINT type, Interface texts);

} // namespace vellumo::norda::odbc
