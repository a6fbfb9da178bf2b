// The host's database, as far as the library uses it. The host owns the real connection; the library never opens or
// closes one. Statements are Transact-SQL. Every member faults with the database's own description.
#pragma once

#include "host/value.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace vellumo::host
{

// A forward-only result. It starts on its first row. Closed by its destructor.
class Recordset
{
public:
    virtual ~Recordset() = default;

    [[nodiscard]] virtual bool IsAtEnd() const = 0;
    virtual void MoveNext() = 0;

    // Columns of the current row; `column` counts from 0, names compare without regard to case. A name that the
    // result does not have is a fault. A text comes without the blanks that fill up a column of fixed length.
    [[nodiscard]] virtual std::size_t ColumnCount() const = 0;
    [[nodiscard]] virtual std::string ColumnName(std::size_t column) const = 0;
    [[nodiscard]] Value Field(std::size_t column) const { return Read(column).WithoutPadding(); }
    [[nodiscard]] Value Field(std::string_view name) const { return Read(name).WithoutPadding(); }

    // As the database gives them.
    [[nodiscard]] virtual Value Read(std::size_t column) const = 0;
    [[nodiscard]] virtual Value Read(std::string_view name) const = 0;
};

class Connection
{
public:
    virtual ~Connection() = default;

    // Runs a query whose text is complete (no placeholders).
    [[nodiscard]] virtual std::unique_ptr<Recordset> Open(const std::string& sql) = 0;

    virtual void BeginTransaction() = 0;
    virtual void CommitTransaction() = 0;
    virtual void RollbackTransaction() = 0;
};

// A group of writes that belongs together. Where the connection can open a transaction the group is stored whole or
// not at all; where it cannot (the host is inside one of its own already) the writes go out one by one, as part of
// whatever the host has open. Without `Commit` the destructor takes everything back.
class Transaction
{
public:
    explicit Transaction(Connection& connection);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void Commit();

private:
    Connection& m_connection;
    bool m_open = false;
};

} // namespace vellumo::host
