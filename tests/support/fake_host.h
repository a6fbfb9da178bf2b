// The host's objects and the bridge for tests of one rule: records and answers in memory, set and read by the test.
#pragma once

#include "host/bridge.h"
#include "host/connection.h"
#include "host/fault.h"
#include "host/host_services.h"
#include "host/prescriptions.h"
#include "host/records.h"
#include "host/utils.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vellumo::tests
{

using Columns = std::map<std::string, host::Value, std::less<>>;

class MemoryRecordset final : public host::Recordset
{
public:
    explicit MemoryRecordset(std::vector<Columns> rows = {})
        : m_rows(std::move(rows))
    {
    }

    [[nodiscard]] bool IsAtEnd() const override { return m_row >= m_rows.size(); }
    void MoveNext() override { ++m_row; }
    [[nodiscard]] std::size_t ColumnCount() const override { return m_rows.empty() ? 0 : m_rows.front().size(); }
    [[nodiscard]] std::string ColumnName(std::size_t column) const override { return At(column)->first; }
    [[nodiscard]] host::Value Field(std::size_t column) const override { return At(column)->second; }
    [[nodiscard]] host::Value Field(std::string_view name) const override
    {
        const auto found = m_rows.at(m_row).find(name);
        if (found == m_rows.at(m_row).end())
        {
            throw host::Fault("Colonna sconosciuta: " + std::string(name));
        }
        return found->second;
    }

private:
    [[nodiscard]] Columns::const_iterator At(std::size_t column) const
    {
        return std::next(m_rows.at(m_row).begin(), static_cast<std::ptrdiff_t>(column));
    }

    std::vector<Columns> m_rows;
    std::size_t m_row = 0;
};

class FakeConnection final : public host::Connection
{
public:
    std::unique_ptr<host::Recordset> Open(const std::string& sql) override
    {
        return std::make_unique<MemoryRecordset>(rowsOf ? rowsOf(sql) : std::vector<Columns>());
    }
    void BeginTransaction() override { log += 'B'; }
    void CommitTransaction() override { log += 'C'; }
    void RollbackTransaction() override { log += 'R'; }

    std::function<std::vector<Columns>(const std::string& sql)> rowsOf;
    std::string log; // begun, committed, rolled back, a letter each
};

class FakeUtils final : public host::Utils
{
public:
    host::Value LookUpValue(const std::string& sql, const host::Parameters& parameters) override
    {
        return valueOf ? valueOf(sql, parameters) : host::Value();
    }
    std::unique_ptr<host::Recordset> OpenRecordset(const std::string& sql, const host::Parameters&) override
    {
        return std::make_unique<MemoryRecordset>(rowsOf ? rowsOf(sql) : std::vector<Columns>());
    }
    host::Value LookUpKey(const std::string&, const std::string&, const std::string&, const host::Parameters&) override
    {
        return {};
    }
    void Execute(const std::string& sql, const host::Parameters&) override { written.push_back(sql); }
    host::Value WriteRow(const std::string& table, const std::string&, const host::Value&,
                         const std::vector<host::ColumnValue>&) override
    {
        written.push_back(table);
        return static_cast<std::int32_t>(written.size());
    }
    host::Value TableDate(const std::string&) override { return tableDate; }
    void StoreTableDate(const std::string&, host::Date, std::int32_t) override {}
    void RecordServiceError(const std::string& line) override { written.push_back(line); }
    bool ToBoolean(const host::Value& value) override { return value.ToBoolean(); }

    std::function<host::Value(const std::string& sql, const host::Parameters& parameters)> valueOf;
    std::function<std::vector<Columns>(const std::string& sql)> rowsOf;
    host::Value tableDate;
    std::vector<std::string> written; // tables and statements, in order
};

// One row of one table; every record of a FakeObjects shares it.
struct StoredRow
{
    Columns columns;
    std::int32_t id = 0;
    std::int32_t newId = 900; // given by the first `Save`
    bool loads = true;
    bool saves = true;
    int saved = 0;
};

class MemoryRecord final : public host::Record
{
public:
    explicit MemoryRecord(StoredRow& row)
        : m_row(row)
    {
    }

    bool Load(std::int32_t id) override
    {
        m_row.id = id;
        return m_row.loads;
    }
    void StartNew() override { m_row.id = 0; }
    [[nodiscard]] host::Value Get(std::string_view column) const override
    {
        const auto found = m_row.columns.find(column);
        return found == m_row.columns.end() ? host::Value() : found->second;
    }
    void Set(std::string_view column, const host::Value& value) override
    {
        m_row.columns.insert_or_assign(std::string(column), value);
    }
    bool Save() override
    {
        m_row.saved += m_row.saves ? 1 : 0;
        m_row.id = m_row.id == 0 ? m_row.newId : m_row.id;
        return m_row.saves;
    }
    [[nodiscard]] std::int32_t Id() const override { return m_row.id; }

private:
    StoredRow& m_row;
};

// For operations that have nothing to do with prescriptions.
class NoPrescriptions final : public host::PrescriptionObjects
{
public:
    std::shared_ptr<host::PrescriptionSession> CreateSession() override { return nullptr; }
    std::unique_ptr<host::PrescriptionData> CreatePrescriptionData(std::int32_t, const host::HostServices&) override
    {
        return nullptr;
    }
};

// Answers one text to all.
class FakeBridge final : public host::Bridge
{
public:
    std::string CallSebMethod(const std::string& requestXml) override
    {
        requests.push_back(requestXml);
        return reply;
    }

    std::vector<std::string> requests;
    std::string reply;
};

} // namespace vellumo::tests
