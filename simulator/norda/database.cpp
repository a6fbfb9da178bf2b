#include "simulator/norda/database.h"

#include "host/fault.h"
#include "host/text.h"
#include "simulator/norda/odbc.h"
#include "simulator/norda/platform.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vellumo::norda
{

struct Database::Session
{
    odbc::Environment environment{SQL_NULL_HANDLE};
    std::unique_ptr<odbc::Connection> connection;
    bool connected = false;
    odbc::Interface texts = odbc::Interface::Wide;

    Session(const std::string& connectionString, Dialect dialect)
    {
        SQLSetEnvAttr(environment.Get(), SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3),
                      0); // ODBC passes numbers as pointers
        connection = std::make_unique<odbc::Connection>(environment.Get());
        auto text = odbc::Wide(connectionString);
        odbc::Check(SQLDriverConnectW(connection->Get(), nullptr, text.data(), SQL_NTS, nullptr, 0, nullptr,
                                      SQL_DRIVER_NOPROMPT),
                    SQL_HANDLE_DBC, connection->Get());
        connected = true;
        if (dialect == Dialect::Sqlite && !TakesWideTexts())
        {
            texts = odbc::Interface::Narrow;
        }
    }
    ~Session()
    {
        if (connected)
        {
            SQLDisconnect(connection->Get());
        }
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Looks at what the driver makes of a letter beyond Latin-1, of which some keep the low byte; the database keeps
    // texts in UTF-8.
    [[nodiscard]] bool TakesWideTexts() const
    {
        const odbc::Statement statement(connection->Get());
        odbc::Execute(statement, "SELECT HEX('\u0110')", odbc::Interface::Wide);
        SQLFetch(statement.Get());
        return odbc::Read(statement, 0, SQL_VARCHAR, odbc::Interface::Wide).ToText() == "C490";
    }

    [[nodiscard]] std::string Info(SQLUSMALLINT what) const
    {
        std::array<SQLWCHAR, 256> text{};
        SQLSMALLINT bytes = 0;
        odbc::Check(SQLGetInfoW(connection->Get(), what, text.data(),
                                static_cast<SQLSMALLINT>(text.size() * sizeof(SQLWCHAR)), &bytes),
                    SQL_HANDLE_DBC, connection->Get());
        const auto end = std::find(text.begin(), text.end(), SQLWCHAR{0});
        return odbc::Narrow(text.data(), static_cast<std::size_t>(end - text.begin()));
    }

    void SetAutocommit(bool on) const
    {
        const auto value = static_cast<std::uintptr_t>(on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF);
        odbc::Check(SQLSetConnectAttrW(connection->Get(), SQL_ATTR_AUTOCOMMIT,
                                       reinterpret_cast<SQLPOINTER>(value), // ODBC passes numbers as pointers
                                       SQL_IS_UINTEGER),
                    SQL_HANDLE_DBC, connection->Get());
    }

    void End(SQLSMALLINT how) const
    {
        odbc::Check(SQLEndTran(SQL_HANDLE_DBC, connection->Get(), how), SQL_HANDLE_DBC, connection->Get());
    }
};

// The rows of one statement. A row is read whole when it is reached, since drivers want columns in order.
class Database::Rows final : public host::Recordset
{
public:
    Rows(std::shared_ptr<Session> session, const std::string& sql)
        : m_session(std::move(session))
        , m_statement(m_session->connection->Get())
    {
        odbc::Execute(m_statement, sql, m_session->texts);
        m_columns = odbc::Columns(m_statement, m_session->texts);
        if (!m_columns.empty())
        {
            m_atEnd = false;
            MoveNext();
        }
    }

    [[nodiscard]] bool IsAtEnd() const override { return m_atEnd; }

    void MoveNext() override
    {
        if (m_atEnd)
        {
            throw host::Fault("Il recordset è alla fine.");
        }
        m_row.clear();
        m_row.reserve(m_columns.size());
        const auto result = SQLFetch(m_statement.Get());
        odbc::Check(result, SQL_HANDLE_STMT, m_statement.Get());
        if (result == SQL_NO_DATA)
        {
            m_atEnd = true;
            return;
        }
        for (std::size_t i = 0; i < m_columns.size(); ++i)
        {
            m_row.push_back(odbc::Read(m_statement, i, m_columns[i].type, m_session->texts));
        }
    }

    [[nodiscard]] std::size_t ColumnCount() const override { return m_columns.size(); }
    [[nodiscard]] std::string ColumnName(std::size_t column) const override { return m_columns.at(column).name; }

    [[nodiscard]] host::Value Read(std::size_t column) const override
    {
        if (column >= m_row.size())
        {
            throw host::Fault(m_atEnd ? "Il recordset è alla fine." : "La colonna chiesta non esiste.");
        }
        return m_row[column];
    }

    [[nodiscard]] host::Value Read(std::string_view name) const override
    {
        for (std::size_t i = 0; i < m_columns.size(); ++i)
        {
            if (host::EqualsIgnoringCase(m_columns[i].name, name))
            {
                return Field(i);
            }
        }
        throw host::Fault("La colonna \"" + std::string(name) + "\" non esiste.");
    }

private:
    std::shared_ptr<Session> m_session;
    odbc::Statement m_statement;
    std::vector<odbc::Column> m_columns;
    std::vector<host::Value> m_row;
    bool m_atEnd = true;
};

Database::Database(Dialect dialect, const std::string& connectionString)
    : m_dialect(dialect)
    , m_session(std::make_shared<Session>(connectionString, dialect))
{
}

Database::~Database()
{
    if (m_inTransaction)
    {
        host::PassOver([&] { m_session->End(SQL_ROLLBACK); });
    }
}

std::shared_ptr<Database> Database::OpenSqlite(const std::filesystem::path& practice,
                                               const std::filesystem::path& shared)
{
    const auto connection = "Driver=SQLite3;Database=" + DriverPath(practice) + ";Timeout=10000;FKSupport=0";
    std::shared_ptr<Database> database(new Database(Dialect::Sqlite, connection));
    database->Execute("ATTACH DATABASE " + Literal(Dialect::Sqlite, DriverPath(shared)) + " AS Norda");
    return database;
}

std::shared_ptr<Database> Database::OpenServer(const std::string& connectionString, const std::string& shared)
{
    std::shared_ptr<Database> database(new Database(Dialect::SqlServer, connectionString));
    database->m_shared = shared;
    return database;
}

std::unique_ptr<host::Recordset> Database::Open(const std::string& sql)
{
    Begin(sql);
    std::unique_ptr<host::Recordset> rows;
    if (m_strict)
    {
        m_strict->BeforeStatement(m_inTransaction);
        rows = m_strict->Show(std::make_unique<Rows>(m_session, ForSqlite(sql, Comparison::AsSqlServer)), sql);
    }
    else
    {
        rows =
            std::make_unique<Rows>(m_session, m_dialect == Dialect::Sqlite ? ForSqlite(sql) : ForServer(sql, m_shared));
    }
    End();
    return rows;
}

void Database::BeginTransaction()
{
    Begin("BEGIN TRANSACTION");
    if (m_inTransaction)
    {
        throw host::Fault("Una transazione è già aperta su questa connessione.");
    }
    if (m_strict)
    {
        m_strict->BeforeTransaction();
    }
    m_session->SetAutocommit(false);
    m_inTransaction = true;
    End();
}

void Database::CommitTransaction()
{
    Begin("COMMIT TRANSACTION");
    if (!m_inTransaction)
    {
        throw host::Fault("The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION.");
    }
    LeaveTransaction(SQL_COMMIT);
    End();
}

void Database::RollbackTransaction()
{
    Begin("ROLLBACK TRANSACTION");
    if (!m_inTransaction)
    {
        throw host::Fault("The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION.");
    }
    LeaveTransaction(SQL_ROLLBACK);
    End();
}

void Database::LeaveTransaction(short how)
{
    m_session->End(how);
    m_inTransaction = false;
    m_session->SetAutocommit(true);
}

void Database::ExecuteScript(std::string_view script)
{
    for (const auto& statement : Statements(script))
    {
        Execute(statement);
    }
}

std::vector<std::string> Database::Statements(std::string_view script)
{
    std::vector<std::string> statements;
    std::string statement;
    while (!script.empty())
    {
        const auto end = std::min(script.find('\n'), script.size());
        auto line = script.substr(0, end);
        script.remove_prefix(std::min(end + 1, script.size()));
        if (line.substr(0, 2) == "--" || line.empty())
        {
            continue;
        }
        const bool last = line.back() == ';';
        statement += line.substr(0, line.size() - (last ? 1 : 0));
        if (last)
        {
            statements.push_back(std::exchange(statement, {}));
        }
        else
        {
            statement += '\n';
        }
    }
    return statements;
}

std::string Database::ServerName() const
{
    return m_session->Info(SQL_DBMS_NAME) + ' ' + m_session->Info(SQL_DBMS_VER);
}

std::string Database::DriverName() const
{
    return m_session->Info(SQL_DRIVER_NAME) + ' ' + m_session->Info(SQL_DRIVER_VER);
}

host::Value Database::Single(const std::string& sql)
{
    const auto rows = Open(sql);
    return rows->IsAtEnd() ? host::Value() : rows->Read(0);
}

std::int32_t Database::LastKey()
{
    return Single(m_dialect == Dialect::Sqlite ? "SELECT last_insert_rowid()" : "SELECT CAST(@@IDENTITY AS INT)")
        .ToInteger();
}

void Database::BecomeStrict()
{
    if (m_dialect == Dialect::Sqlite)
    {
        EnforceColumns(*this);
        m_strict = std::make_unique<StrictServer>();
    }
}

void Database::Fail(ServerFault fault, const std::string& text)
{
    m_failsLate = fault == ServerFault::Reported;
    if (m_failsLate)
    {
        return;
    }
    m_lost = m_lost || fault == ServerFault::Lost;
    const bool takenBack = fault == ServerFault::Deadlock || fault == ServerFault::Doomed || m_lost;
    if (takenBack && m_inTransaction)
    {
        LeaveTransaction(SQL_ROLLBACK);
    }
    throw FaultOf(fault, text);
}

void Database::Begin(const std::string& sql)
{
    if (m_observer)
    {
        m_observer(sql);
    }
    if (m_lost)
    {
        throw FaultOf(ServerFault::Lost, "");
    }
}

void Database::End()
{
    if (std::exchange(m_failsLate, false))
    {
        throw FaultOf(ServerFault::Reported, "");
    }
}

} // namespace vellumo::norda
