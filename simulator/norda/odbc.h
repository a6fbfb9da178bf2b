// ODBC with owners: an environment, a connection, a statement, each freed once. Texts are UTF-8 here and UTF-16 at the
// driver. A call that fails is a fault with the driver's text.
#pragma once

#include "host/value.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>

namespace vellumo::norda::odbc
{

[[nodiscard]] std::vector<SQLWCHAR> Wide(std::string_view text); // ends with a zero
[[nodiscard]] std::string Narrow(const SQLWCHAR* text, std::size_t length);

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
void Check(SQLRETURN result, SQLSMALLINT handleType, SQLHANDLE handle);

struct Column
{
    std::string name;
    SQLSMALLINT type = 0;
};

[[nodiscard]] std::vector<Column> Columns(const Statement& statement);
// Columns must be read in order.
[[nodiscard]] host::Value Read(const Statement& statement, std::size_t column, SQLSMALLINT type);

} // namespace vellumo::norda::odbc
