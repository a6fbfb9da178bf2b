// The host and the bridge in memory: records, rows and answers that the test sets and reads. An object that the test
// has told nothing answers as an empty database does.
#pragma once

#include "host/bridge.h"
#include "host/connection.h"
#include "host/host_services.h"
#include "host/prescriptions.h"
#include "host/records.h"
#include "host/utils.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace vellumo::tests
{

using Columns = std::map<std::string, host::Value, std::less<>>; // by position: in the order of the names
using Rows = std::vector<Columns>;

class MemoryRecordset final : public host::Recordset
{
public:
    explicit MemoryRecordset(Rows rows = {});

    [[nodiscard]] bool IsAtEnd() const override { return m_row >= m_rows.size(); }
    void MoveNext() override { ++m_row; }
    [[nodiscard]] std::size_t ColumnCount() const override;
    [[nodiscard]] std::string ColumnName(std::size_t column) const override { return At(column)->first; }
    [[nodiscard]] host::Value Read(std::size_t column) const override { return At(column)->second; }
    [[nodiscard]] host::Value Read(std::string_view name) const override;

private:
    [[nodiscard]] Columns::const_iterator At(std::size_t column) const;

    Rows m_rows;
    std::size_t m_row = 0;
};

class FakeConnection final : public host::Connection
{
public:
    std::unique_ptr<host::Recordset> Open(const std::string& sql) override;
    void BeginTransaction() override;
    void CommitTransaction() override;
    void RollbackTransaction() override { log += 'R'; }

    std::function<void()> called; // at the beginning of each member
    std::function<Rows(const std::string& sql)> rowsOf;
    bool isBusy = false; // with a transaction of the host's own
    bool refusesCommit = false;
    std::string log; // begun, committed, rolled back, a letter each
};

class FakeLockSrv final : public host::LockSrv
{
public:
    [[nodiscard]] std::int32_t UserId() override;

    std::function<void()> called;
};

class FakeUtils final : public host::Utils
{
public:
    host::Value LookUpValue(const std::string& sql, const host::Parameters& parameters) override;
    std::unique_ptr<host::Recordset> OpenRecordset(const std::string& sql, const host::Parameters& parameters) override;
    host::Value LookUpKey(const std::string& table, const std::string& keyColumn, const std::string& condition,
                          const host::Parameters& parameters) override;
    void Execute(const std::string& sql, const host::Parameters& parameters) override;
    host::Value WriteRow(const std::string& table, const std::string& keyColumn, const host::Value& key,
                         const std::vector<host::ColumnValue>& columns) override;
    host::Value TableDate(const std::string& table) override;
    void StoreTableDate(const std::string& table, host::Date date, std::int32_t user) override;
    void RecordServiceError(const std::string& line) override;
    bool ToBoolean(const host::Value& value) override;

    std::function<void()> called; // at the beginning of each member
    std::function<host::Value(const std::string& sql, const host::Parameters& parameters)> valueOf;
    std::function<Rows(const std::string& sql)> rowsOf;
    std::function<void(const std::string& table, const std::vector<host::ColumnValue>& columns)> rowWritten;
    host::Value tableDate;
    std::vector<std::string> written; // tables, statements and lines of the journal, in order

private:
    void Called() const;
};

// One row of one table; every record that stands on it shares it.
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

    bool Load(std::int32_t id) override;
    void StartNew() override { m_row.id = 0; }
    [[nodiscard]] host::Value Read(std::string_view column) const override;
    void Set(std::string_view column, const host::Value& value) override;
    bool Save() override;
    [[nodiscard]] std::int32_t Id() const override { return m_row.id; }

private:
    StoredRow& m_row;
};

// Patients are all one row, and so are ASLs and doctors; the practice has settings when there is one of them.
class FakeObjects final : public host::HostObjects
{
public:
    std::unique_ptr<host::Record> CreateRecord(host::RecordKind kind, const host::HostServices& services) override;
    std::unique_ptr<host::PracticeSettings> CreateSettings(const host::HostServices& services) override;

    StoredRow patient;
    StoredRow other;
    Columns settings;
    std::function<void(const host::HostServices& services)> created; // with each record
};

// A host without prescriptions, or with those of one form.
class FakePrescriptions final : public host::PrescriptionObjects
{
public:
    std::shared_ptr<host::PrescriptionSession> CreateSession() override;
    std::unique_ptr<host::PrescriptionData> CreatePrescriptionData(std::int32_t kind,
                                                                   const host::HostServices& services) override;

    std::vector<host::PrescriptionKey> form;
};

// Keeps the responses of drugs. One that is expired takes no more, and gives back the first only.
class FakeSession final : public host::PrescriptionSession
{
public:
    [[nodiscard]] bool SenzaSISS() const override { return false; }
    void SetSenzaSISS(bool) override {}
    [[nodiscard]] bool DaValidare() const override { return waits; }
    void SetDaValidare(bool) override {}
    [[nodiscard]] std::shared_ptr<host::OpzioniRicetta> Options() const override { return options; }
    void SetOptions(const std::shared_ptr<host::OpzioniRicetta>&) override {}
    void AddResponse(std::int32_t kind, const std::shared_ptr<host::KeptObject>& response) override;
    [[nodiscard]] std::size_t ResponseCount(std::int32_t kind) const override;
    [[nodiscard]] std::shared_ptr<host::KeptObject> Response(std::int32_t kind, std::size_t position) const override;

    bool waits = false; // for the doctor
    bool expired = false;
    bool keepsExpired = false; // what it is given all the same
    std::shared_ptr<host::OpzioniRicetta> options = std::make_shared<host::OpzioniRicetta>();

private:
    std::vector<std::shared_ptr<host::KeptObject>> m_responses;
};

// Answers one text to all.
class FakeBridge final : public host::Bridge
{
public:
    std::string CallSebMethod(const std::string& requestXml) override;

    std::vector<std::string> requests;
    std::string reply;
};

} // namespace vellumo::tests
