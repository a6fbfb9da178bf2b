// How ADO on SQL Server behaves where a library can notice: the manners of the strict host's connection. A Database
// that has been made strict owns one and goes by it; its recordsets share it.
#pragma once

#include "host/connection.h"
#include "host/fault.h"
#include "simulator/norda/sql_types.h"

#include <cstddef>
#include <memory>
#include <string>

namespace vellumo::norda
{

class Database;

// What a server does to a statement that it fails.
enum class ServerFault
{
    Plain,    // nothing else
    Deadlock, // the transaction is the victim of a deadlock: the server takes it back
    Doomed,   // an error that dooms the transaction: the same
    Timeout,  // the statement took too long; the transaction goes on
    Lost,     // the connection is gone for good, and its transaction with it
    Reported  // none: the statement happens, and fails all the same
};

// As ADO reports it; of a plain one `text`.
[[nodiscard]] host::Fault FaultOf(ServerFault fault, const std::string& text);

// A result whose columns are those of SQL Server.
class TypedRecordset : public host::Recordset
{
public:
    [[nodiscard]] virtual SqlType TypeOf(std::size_t column) const = 0;
};

class StrictServer
{
public:
    // Faults when a result is still open that has not been read to its end and the connection is inside a transaction:
    // ADO opens another connection for each result, and a transaction has only one. Outside of one it counts them.
    void BeforeStatement(bool inTransaction);
    // No transaction begins while a result is open.
    void BeforeTransaction() const;

    // Connections that the provider opened silently, for a result beside an open one.
    [[nodiscard]] std::size_t SecondConnections() const noexcept { return m_secondConnections; }

    // The result of the statement as ADO shows it: closed where there are no columns; one that selects all columns of
    // a table has a unique identifier and a version of the row, too.
    [[nodiscard]] std::unique_ptr<host::Recordset> Show(std::unique_ptr<host::Recordset> rows,
                                                        const std::string& sql) const;

private:
    std::shared_ptr<int> m_unread = std::make_shared<int>(0); // results open and not at their end
    std::size_t m_secondConnections = 0;
};

// From now on the database refuses texts that are too long for their columns, and dates before 1753.
void EnforceColumns(Database& database);

} // namespace vellumo::norda
