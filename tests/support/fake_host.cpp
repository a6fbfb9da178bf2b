#include "tests/support/fake_host.h"

#include "host/fault.h"

#include <utility>

namespace vellumo::tests
{
namespace
{

void Call(const std::function<void()>& called)
{
    if (called)
    {
        called();
    }
}

class FakeSettings final : public host::PracticeSettings
{
public:
    explicit FakeSettings(const Columns& settings)
        : m_settings(settings)
    {
    }

    [[nodiscard]] bool Load(std::int32_t) override { return !m_settings.empty(); }
    [[nodiscard]] host::Value Read(std::string_view name) const override
    {
        const auto found = m_settings.find(name);
        return found == m_settings.end() ? host::Value() : found->second;
    }

private:
    const Columns& m_settings;
};

class FakeForm final : public host::PrescriptionData
{
public:
    explicit FakeForm(const std::vector<host::PrescriptionKey>& form)
        : m_form(form)
    {
    }

    [[nodiscard]] std::vector<host::PrescriptionKey> List(std::int32_t, std::int32_t) override { return m_form; }
    [[nodiscard]] std::unique_ptr<host::Record> Find(const host::PrescriptionKey&) override { return nullptr; }

private:
    const std::vector<host::PrescriptionKey>& m_form;
};

} // namespace

MemoryRecordset::MemoryRecordset(Rows rows)
    : m_rows(std::move(rows))
{
}

std::size_t MemoryRecordset::ColumnCount() const
{
    return m_rows.empty() ? 0 : m_rows.front().size();
}

host::Value MemoryRecordset::Read(std::string_view name) const
{
    const auto found = m_rows.at(m_row).find(name);
    if (found == m_rows.at(m_row).end())
    {
        throw host::Fault("Colonna sconosciuta: " + std::string(name));
    }
    return found->second;
}

Columns::const_iterator MemoryRecordset::At(std::size_t column) const
{
    return std::next(m_rows.at(m_row).begin(), static_cast<std::ptrdiff_t>(column));
}

std::unique_ptr<host::Recordset> FakeConnection::Open(const std::string& sql)
{
    Call(called);
    return std::make_unique<MemoryRecordset>(rowsOf ? rowsOf(sql) : Rows());
}

void FakeConnection::BeginTransaction()
{
    Call(called);
    if (isBusy)
    {
        throw host::Fault("già aperta");
    }
    log += 'B';
}

void FakeConnection::CommitTransaction()
{
    Call(called);
    if (refusesCommit)
    {
        throw host::Fault("rifiutata");
    }
    log += 'C';
}

std::int32_t FakeLockSrv::UserId()
{
    Call(called);
    return 7;
}

void FakeUtils::Called() const
{
    Call(called);
}

host::Value FakeUtils::LookUpValue(const std::string& sql, const host::Parameters& parameters)
{
    Called();
    return valueOf ? valueOf(sql, parameters) : host::Value();
}

std::unique_ptr<host::Recordset> FakeUtils::OpenRecordset(const std::string& sql, const host::Parameters&)
{
    Called();
    return std::make_unique<MemoryRecordset>(rowsOf ? rowsOf(sql) : Rows());
}

host::Value FakeUtils::LookUpKey(const std::string&, const std::string&, const std::string&, const host::Parameters&)
{
    Called();
    return {};
}

void FakeUtils::Execute(const std::string& sql, const host::Parameters&)
{
    Called();
    written.push_back(sql);
}

host::Value FakeUtils::WriteRow(const std::string& table, const std::string&, const host::Value&,
                                const std::vector<host::ColumnValue>& columns)
{
    Called();
    if (rowWritten)
    {
        rowWritten(table, columns);
    }
    written.push_back(table);
    return static_cast<std::int32_t>(written.size());
}

host::Value FakeUtils::TableDate(const std::string&)
{
    Called();
    return tableDate;
}

void FakeUtils::StoreTableDate(const std::string&, host::Date, std::int32_t)
{
    Called();
}

void FakeUtils::RecordServiceError(const std::string& line)
{
    Called();
    written.push_back(line);
}

bool FakeUtils::ToBoolean(const host::Value& value)
{
    Called();
    return value.ToBoolean();
}

bool MemoryRecord::Load(std::int32_t id)
{
    m_row.id = id;
    return m_row.loads;
}

host::Value MemoryRecord::Read(std::string_view column) const
{
    const auto found = m_row.columns.find(column);
    return found == m_row.columns.end() ? host::Value() : found->second;
}

void MemoryRecord::Set(std::string_view column, const host::Value& value)
{
    m_row.columns.insert_or_assign(std::string(column), value);
}

bool MemoryRecord::Save()
{
    m_row.saved += m_row.saves ? 1 : 0;
    m_row.id = m_row.id == 0 ? m_row.newId : m_row.id;
    return m_row.saves;
}

std::unique_ptr<host::Record> FakeObjects::CreateRecord(host::RecordKind kind, const host::HostServices& services)
{
    if (created)
    {
        created(services);
    }
    return std::make_unique<MemoryRecord>(kind == host::RecordKind::Patient ? patient : other);
}

std::unique_ptr<host::PracticeSettings> FakeObjects::CreateSettings(const host::HostServices&)
{
    return std::make_unique<FakeSettings>(settings);
}

std::shared_ptr<host::PrescriptionSession> FakePrescriptions::CreateSession()
{
    return std::make_shared<FakeSession>();
}

std::unique_ptr<host::PrescriptionData> FakePrescriptions::CreatePrescriptionData(std::int32_t,
                                                                                  const host::HostServices&)
{
    return std::make_unique<FakeForm>(form);
}

void FakeSession::AddResponse(std::int32_t, const std::shared_ptr<host::KeptObject>& response)
{
    if (!expired || keepsExpired)
    {
        m_responses.push_back(response);
    }
    if (expired)
    {
        throw host::Fault("Sessione scaduta.");
    }
}

std::size_t FakeSession::ResponseCount(std::int32_t kind) const
{
    return kind == host::kindDrugs ? m_responses.size() : 0;
}

std::shared_ptr<host::KeptObject> FakeSession::Response(std::int32_t, std::size_t position) const
{
    if (expired && position > 0)
    {
        throw host::Fault("Sessione scaduta.");
    }
    return m_responses.at(position);
}

std::string FakeBridge::CallSebMethod(const std::string& requestXml)
{
    requests.push_back(requestXml);
    return reply;
}

} // namespace vellumo::tests
