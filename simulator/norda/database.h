// The simulated host's database, reached through ODBC on every target. The embedded default is SQLite: one file for
// the practice and one for the shared reference data, attached as `Norda`. The other is a SQL Server
// (`ServerDatabases`), on which the shared database has a name of its own.
//
// Faults carry the driver's own text, as a host's database errors do. A recordset keeps the connection open that it
// belongs to.
#pragma once

#include "host/connection.h"
#include "simulator/norda/sql_dialect.h"
#include "simulator/norda/strict_server.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::norda
{

class Database final : public host::Connection
{
public:
    [[nodiscard]] static std::shared_ptr<Database> OpenSqlite(const std::filesystem::path& practice,
                                                              const std::filesystem::path& shared);
    // `shared` is what the shared database is called there.
    [[nodiscard]] static std::shared_ptr<Database> OpenServer(const std::string& connectionString,
                                                              const std::string& shared = "Norda");
    ~Database() override;

    [[nodiscard]] Dialect GetDialect() const noexcept { return m_dialect; }

    [[nodiscard]] std::unique_ptr<host::Recordset> Open(const std::string& sql) override;
    void BeginTransaction() override;
    void CommitTransaction() override;
    void RollbackTransaction() override;

    // Runs a statement whose rows, if any, nobody wants.
    void Execute(const std::string& sql) { static_cast<void>(Open(sql)); }
    // Runs the statements of a script: each ends with ";" at the end of a line, lines that begin with "--" are
    // comments.
    void ExecuteScript(std::string_view script);
    [[nodiscard]] static std::vector<std::string> Statements(std::string_view script);
    // What is behind it: "SQLite 3.40.1", and the driver, "libsqlite3odbc.so 0.9998".
    [[nodiscard]] std::string ServerName() const;
    [[nodiscard]] std::string DriverName() const;
    // First column of the first row; null when there is none.
    [[nodiscard]] host::Value Single(const std::string& sql);
    // Key that the last INSERT on this connection was given.
    [[nodiscard]] std::int32_t LastKey();

    // For the observer: the server fails the statement in this way. Throws, now or after the statement.
    void Fail(ServerFault fault, const std::string& text);

    // Hears of every statement (also "BEGIN TRANSACTION" and the like) before it is run; a fault from it is the
    // statement's. For the scenarios' database faults and for telling what was stored.
    using Observer = std::function<void(const std::string& sql)>;
    void SetObserver(Observer observer) { m_observer = std::move(observer); }

    // From now on it behaves as ADO on SQL Server does. Only for SQLite: a server is strict by itself.
    void BecomeStrict();
    // Null: it is not.
    [[nodiscard]] const StrictServer* Strictness() const noexcept { return m_strict.get(); }

private:
    struct Session;
    class Rows;

    Database(Dialect dialect, const std::string& connectionString);
    void Begin(const std::string& sql);
    void End();
    void LeaveTransaction(short how);

    Dialect m_dialect;
    std::string m_shared; // of a server
    std::shared_ptr<Session> m_session;
    bool m_inTransaction = false;
    bool m_lost = false;      // the server is out of reach
    bool m_failsLate = false; // the statement being run fails when it has happened
    std::unique_ptr<StrictServer> m_strict;
    Observer m_observer;
};

} // namespace vellumo::norda
