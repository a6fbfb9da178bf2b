// The host's database connection and its recordsets, reached late-bound in the object model of ADO. An adapter holds
// a reference to the host's object and nothing else of the host's.
#pragma once

#include "host/connection.h"
#include "platform/windows/adapters/host_names.h"
#include "platform/windows/adapters/late_bound.h"

#include <vector>

namespace vellumo::windows
{

// The Field objects are fetched once, when first asked for, and kept while the recordset moves: fetching one costs as
// much as reading it five times.
class AdoRecordset final : public host::Recordset
{
public:
    // `object` is an open recordset on its first row, or a closed one, which has no rows and no columns.
    explicit AdoRecordset(ComPtr<IDispatch> object, const HostNameMap& hostNames = HostNameMap::Compiled());
    ~AdoRecordset() override;

    [[nodiscard]] bool IsAtEnd() const override;
    void MoveNext() override;
    [[nodiscard]] std::size_t ColumnCount() const override;
    [[nodiscard]] std::string ColumnName(std::size_t column) const override;
    [[nodiscard]] host::Value Read(std::size_t column) const override;
    [[nodiscard]] host::Value Read(std::string_view name) const override;

private:
    struct Column
    {
        LateBound field;
        std::wstring name;
    };

    void ReadColumns();
    [[nodiscard]] host::Value ValueOf(const LateBound& field) const;
    [[nodiscard]] const Column& ColumnAt(std::size_t column) const;

    LateBound m_recordset;
    bool m_open = false;
    std::vector<Column> m_columns;
    mutable Member m_eof{names::recordset::eof};
    mutable Member m_moveNext{names::recordset::moveNext};
    mutable Member m_value{names::field::value};
};

class AdoConnection final : public host::Connection
{
public:
    explicit AdoConnection(ComPtr<IDispatch> connection, const HostNameMap& hostNames = HostNameMap::Compiled());

    [[nodiscard]] std::unique_ptr<host::Recordset> Open(const std::string& sql) override;
    void BeginTransaction() override;
    void CommitTransaction() override;
    void RollbackTransaction() override;

private:
    LateBound m_connection;
    Member m_execute{names::connection::execute};
    Member m_beginTrans{names::connection::beginTrans};
    Member m_commitTrans{names::connection::commitTrans};
    Member m_rollbackTrans{names::connection::rollbackTrans};
};

} // namespace vellumo::windows
