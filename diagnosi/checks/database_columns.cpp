#include "diagnosi/checks/database_columns.h"

#include "host/fault.h"
#include "host/text.h"

#include <algorithm>
#include <array>

#ifdef _WIN32
#include <windows.h>
#endif
#define SQL_NOUNICODEMAP // which of the two interfaces is called stands in each call's name
#include <sql.h>
#include <sqlext.h>

namespace vellumo::diagnosi
{
namespace
{

std::vector<SQLWCHAR> Wide(std::string_view text)
{
    std::vector<SQLWCHAR> wide;
    for (std::size_t at = 0; at < text.size();)
    {
        const char32_t c = host::TakeCharacter(text, at);
        wide.push_back(static_cast<SQLWCHAR>(c < 0x10000 ? c : U'?')); // beyond these no connection has any
    }
    wide.push_back(0);
    return wide;
}

} // namespace

// One ODBC handle, freed once.
class OdbcHandle
{
public:
    OdbcHandle(SQLSMALLINT type, SQLHANDLE parent)
        : m_type(type)
    {
        SQLAllocHandle(type, parent, &m_handle);
    }
    ~OdbcHandle() { SQLFreeHandle(m_type, m_handle); }
    OdbcHandle(const OdbcHandle&) = delete;
    OdbcHandle& operator=(const OdbcHandle&) = delete;

    [[nodiscard]] SQLHANDLE Get() const noexcept { return m_handle; }

    void Check(SQLRETURN result) const
    {
        if (SQL_SUCCEEDED(result))
        {
            return;
        }
        std::array<SQLCHAR, 6> state{};
        std::array<SQLCHAR, 512> text{};
        SQLINTEGER number = 0;
        SQLSMALLINT length = 0;
        const bool told = SQL_SUCCEEDED(SQLGetDiagRec(m_type, m_handle, 1, state.data(), &number, text.data(),
                                                      static_cast<SQLSMALLINT>(text.size()), &length));
        throw host::Fault(told ? std::string(text.begin(), std::find(text.begin(), text.end(), SQLCHAR{0}))
                               : "il driver ODBC non dice perché.");
    }

private:
    SQLSMALLINT m_type;
    SQLHANDLE m_handle = SQL_NULL_HANDLE;
};

namespace
{

std::string TextOf(const OdbcHandle& statement, SQLUSMALLINT column)
{
    std::array<char, 256> text{};
    SQLLEN bytes = 0;
    statement.Check(
        SQLGetData(statement.Get(), column, SQL_C_CHAR, text.data(), static_cast<SQLLEN>(text.size()), &bytes));
    return bytes == SQL_NULL_DATA ? std::string() : std::string(text.data());
}

} // namespace

struct DatabaseColumns::Session
{
    OdbcHandle environment{SQL_HANDLE_ENV, SQL_NULL_HANDLE};
    std::unique_ptr<OdbcHandle> connection;
    bool isConnected = false;

    explicit Session(const std::string& text)
    {
        SQLSetEnvAttr(environment.Get(), SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3),
                      0); // ODBC passes numbers as pointers
        connection = std::make_unique<OdbcHandle>(SQL_HANDLE_DBC, environment.Get());
        auto wide = Wide(text);
        connection->Check(SQLDriverConnectW(connection->Get(), nullptr, wide.data(), SQL_NTS, nullptr, 0, nullptr,
                                            SQL_DRIVER_NOPROMPT));
        isConnected = true;
    }
    ~Session()
    {
        if (isConnected)
        {
            SQLDisconnect(connection->Get());
        }
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
};

DatabaseColumns::DatabaseColumns(const std::string& connection)
    : m_session(std::make_unique<Session>(connection))
{
}

DatabaseColumns::~DatabaseColumns() = default;

std::vector<DatabaseColumn> DatabaseColumns::Of(std::string_view catalog, std::string_view table) const
{
    constexpr SQLUSMALLINT columnName = 4; // of the result
    constexpr SQLUSMALLINT typeName = 6;
    const OdbcHandle statement(SQL_HANDLE_STMT, m_session->connection->Get());
    auto wideCatalog = Wide(catalog);
    auto wideTable = Wide(table);
    statement.Check(SQLColumnsW(statement.Get(), catalog.empty() ? nullptr : wideCatalog.data(),
                                catalog.empty() ? SQLSMALLINT{0} : SQLSMALLINT{SQL_NTS}, nullptr, 0, wideTable.data(),
                                SQL_NTS, nullptr, 0));
    std::vector<DatabaseColumn> columns;
    for (SQLRETURN result = SQLFetch(statement.Get()); result != SQL_NO_DATA; result = SQLFetch(statement.Get()))
    {
        statement.Check(result);
        std::string name = TextOf(statement, columnName); // columns are read in order
        columns.push_back({std::move(name), TextOf(statement, typeName)});
    }
    return columns;
}

} // namespace vellumo::diagnosi
