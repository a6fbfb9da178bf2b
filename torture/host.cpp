#include "torture/host.h"

#include "host/fault.h"
#include "host/host_services.h"
#include "torture/outside_call.h"

#include <utility>

namespace vellumo::torture
{
namespace
{

// A call that does nothing else than pass on.
template <class Work>
auto Through(Kind kind, Work&& work)
{
    const OutsideCall call(kind);
    call.FailIfDue();
    return std::forward<Work>(work)();
}

class Rows final : public host::Recordset, private Held
{
public:
    explicit Rows(std::unique_ptr<host::Recordset> rows)
        : m_rows(std::move(rows))
    {
    }
    ~Rows() override
    {
        const OutsideCall call;
        m_rows.reset();
    }
    Rows(const Rows&) = delete;
    Rows& operator=(const Rows&) = delete;

    [[nodiscard]] bool IsAtEnd() const override
    {
        return Through(Kind::End, [&] { return m_rows->IsAtEnd(); });
    }
    void MoveNext() override
    {
        Through(Kind::Move, [&] { m_rows->MoveNext(); });
    }
    [[nodiscard]] std::size_t ColumnCount() const override
    {
        return Through(Kind::Field, [&] { return m_rows->ColumnCount(); });
    }
    [[nodiscard]] std::string ColumnName(std::size_t column) const override
    {
        return Through(Kind::Field, [&] { return m_rows->ColumnName(column); });
    }
    [[nodiscard]] host::Value Read(std::size_t column) const override
    {
        return Through(Kind::Field, [&] { return m_rows->Read(column); });
    }
    [[nodiscard]] host::Value Read(std::string_view name) const override
    {
        return Through(Kind::Field, [&] { return m_rows->Read(name); });
    }

private:
    std::unique_ptr<host::Recordset> m_rows;
};

class Connection final : public host::Connection, private Held
{
public:
    explicit Connection(std::shared_ptr<host::Connection> connection)
        : m_connection(std::move(connection))
    {
    }

    [[nodiscard]] std::unique_ptr<host::Recordset> Open(const std::string& sql) override
    {
        return Through(Kind::Open, [&] { return std::make_unique<Rows>(m_connection->Open(sql)); });
    }
    void BeginTransaction() override
    {
        Through(Kind::Begin,
                [&]
                {
                    m_connection->BeginTransaction();
                    ++Seen().transactions;
                });
    }
    void CommitTransaction() override
    {
        const OutsideCall call(Kind::Commit);
        call.FailIfDue();
        m_connection->CommitTransaction();
        --Seen().transactions;
        call.FailAfter(Kind::Committed);
    }
    void RollbackTransaction() override
    {
        Through(Kind::Rollback,
                [&]
                {
                    m_connection->RollbackTransaction();
                    --Seen().transactions;
                });
    }

    // What the host's own objects work with.
    [[nodiscard]] const std::shared_ptr<host::Connection>& Own() const noexcept { return m_connection; }

private:
    std::shared_ptr<host::Connection> m_connection;
};

class Utils final : public host::Utils, private Held
{
public:
    explicit Utils(std::shared_ptr<host::Utils> utils)
        : m_utils(std::move(utils))
    {
    }

    [[nodiscard]] std::unique_ptr<host::Recordset> OpenRecordset(const std::string& sql,
                                                                 const host::Parameters& parameters) override
    {
        return Through(Kind::Open, [&] { return std::make_unique<Rows>(m_utils->OpenRecordset(sql, parameters)); });
    }
    void Execute(const std::string& sql, const host::Parameters& parameters) override
    {
        Through(Kind::Execute, [&] { m_utils->Execute(sql, parameters); });
    }
    host::Value WriteRow(const std::string& table, const std::string& keyColumn, const host::Value& key,
                         const std::vector<host::ColumnValue>& columns) override
    {
        return Through(Kind::Write, [&] { return m_utils->WriteRow(table, keyColumn, key, columns); });
    }
    [[nodiscard]] host::Value TableDate(const std::string& table) override
    {
        return Through(Kind::TableDate, [&] { return m_utils->TableDate(table); });
    }
    void StoreTableDate(const std::string& table, host::Date date, std::int32_t user) override
    {
        Through(Kind::TableDate, [&] { m_utils->StoreTableDate(table, date, user); });
    }
    void RecordServiceError(const std::string& line) override
    {
        Through(Kind::Journal, [&] { m_utils->RecordServiceError(line); });
    }
    [[nodiscard]] bool ToBoolean(const host::Value& value) override
    {
        return Through(Kind::Get, [&] { return m_utils->ToBoolean(value); });
    }
    [[nodiscard]] host::Value LookUpValue(const std::string& sql, const host::Parameters& parameters) override
    {
        return Through(Kind::LookUp, [&] { return m_utils->LookUpValue(sql, parameters); });
    }
    [[nodiscard]] host::Value LookUpKey(const std::string& table, const std::string& keyColumn,
                                        const std::string& condition, const host::Parameters& parameters) override
    {
        return Through(Kind::LookUp, [&] { return m_utils->LookUpKey(table, keyColumn, condition, parameters); });
    }

private:
    std::shared_ptr<host::Utils> m_utils;
};

class LockSrv final : public host::LockSrv, private Held
{
public:
    explicit LockSrv(std::shared_ptr<host::LockSrv> lockSrv)
        : m_lockSrv(std::move(lockSrv))
    {
    }
    [[nodiscard]] std::int32_t UserId() override
    {
        return Through(Kind::User, [&] { return m_lockSrv->UserId(); });
    }

private:
    std::shared_ptr<host::LockSrv> m_lockSrv;
};

class Record final : public host::Record, private Held
{
public:
    explicit Record(std::shared_ptr<host::Record> record)
        : m_record(std::move(record))
    {
    }
    ~Record() override
    {
        const OutsideCall call;
        m_record.reset();
    }
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;

    [[nodiscard]] bool Load(std::int32_t id) override
    {
        return Through(Kind::Load, [&] { return m_record->Load(id); });
    }
    void StartNew() override
    {
        Through(Kind::Load, [&] { m_record->StartNew(); });
    }
    [[nodiscard]] host::Value Read(std::string_view column) const override
    {
        return Through(Kind::Get, [&] { return m_record->Read(column); });
    }
    void Set(std::string_view column, const host::Value& value) override
    {
        Through(Kind::Set, [&] { m_record->Set(column, value); });
    }
    [[nodiscard]] bool Save() override
    {
        const OutsideCall call(Kind::Save);
        call.FailIfDue();
        const bool saved = m_record->Save();
        call.FailAfter(Kind::Saved);
        return saved;
    }
    [[nodiscard]] std::int32_t Id() const override
    {
        return Through(Kind::Identifier, [&] { return m_record->Id(); });
    }

private:
    std::shared_ptr<host::Record> m_record;
};

class Settings final : public host::PracticeSettings, private Held
{
public:
    explicit Settings(std::unique_ptr<host::PracticeSettings> settings)
        : m_settings(std::move(settings))
    {
    }
    [[nodiscard]] bool Load(std::int32_t studio) override
    {
        return Through(Kind::Load, [&] { return m_settings->Load(studio); });
    }
    [[nodiscard]] host::Value Read(std::string_view name) const override
    {
        return Through(Kind::Get, [&] { return m_settings->Read(name); });
    }

private:
    std::unique_ptr<host::PracticeSettings> m_settings;
};

host::HostServices Own(host::HostServices services)
{
    if (const auto connection = std::dynamic_pointer_cast<Connection>(services.connection))
    {
        services.connection = connection->Own();
    }
    return services;
}

class Objects final : public host::HostObjects
{
public:
    explicit Objects(host::HostObjects& objects)
        : m_objects(objects)
    {
    }
    [[nodiscard]] std::unique_ptr<host::Record> CreateRecord(host::RecordKind kind,
                                                             const host::HostServices& services) override
    {
        return Through(Kind::Create,
                       [&] { return std::make_unique<Record>(m_objects.CreateRecord(kind, Own(services))); });
    }
    [[nodiscard]] std::unique_ptr<host::PracticeSettings> CreateSettings(const host::HostServices& services) override
    {
        return Through(Kind::Create,
                       [&] { return std::make_unique<Settings>(m_objects.CreateSettings(Own(services))); });
    }

private:
    host::HostObjects& m_objects;
};

class Data final : public host::PrescriptionData, private Held
{
public:
    explicit Data(std::unique_ptr<host::PrescriptionData> data)
        : m_data(std::move(data))
    {
    }
    [[nodiscard]] std::vector<host::PrescriptionKey> List(std::int32_t idRicetta, std::int32_t numRicetta) override
    {
        return Through(Kind::List, [&] { return m_data->List(idRicetta, numRicetta); });
    }
    [[nodiscard]] std::unique_ptr<host::Record> Find(const host::PrescriptionKey& key) override
    {
        return Through(Kind::List,
                       [&]() -> std::unique_ptr<host::Record>
                       {
                           auto row = m_data->Find(key);
                           return row ? std::make_unique<Record>(std::move(row)) : nullptr;
                       });
    }

private:
    std::unique_ptr<host::PrescriptionData> m_data;
};

class Session final : public norda::PrescriptionSession, private Held
{
public:
    [[nodiscard]] bool SenzaSISS() const override
    {
        return Through(Kind::Session, [&] { return norda::PrescriptionSession::SenzaSISS(); });
    }
    void SetSenzaSISS(bool value) override
    {
        Through(Kind::Session, [&] { norda::PrescriptionSession::SetSenzaSISS(value); });
    }
    [[nodiscard]] bool DaValidare() const override
    {
        return Through(Kind::Session, [&] { return norda::PrescriptionSession::DaValidare(); });
    }
    void SetDaValidare(bool value) override
    {
        Through(Kind::Session, [&] { norda::PrescriptionSession::SetDaValidare(value); });
    }
    [[nodiscard]] std::shared_ptr<host::OpzioniRicetta> Options() const override
    {
        return Through(Kind::Session, [&] { return norda::PrescriptionSession::Options(); });
    }
    void SetOptions(const std::shared_ptr<host::OpzioniRicetta>& options) override
    {
        Through(Kind::Session, [&] { norda::PrescriptionSession::SetOptions(options); });
    }
    void AddResponse(std::int32_t kind, const std::shared_ptr<host::KeptObject>& response) override
    {
        Through(Kind::Session, [&] { norda::PrescriptionSession::AddResponse(kind, response); });
    }
    [[nodiscard]] std::size_t ResponseCount(std::int32_t kind) const override
    {
        return Through(Kind::Session, [&] { return norda::PrescriptionSession::ResponseCount(kind); });
    }
    [[nodiscard]] std::shared_ptr<host::KeptObject> Response(std::int32_t kind, std::size_t position) const override
    {
        return Through(Kind::Session, [&] { return norda::PrescriptionSession::Response(kind, position); });
    }
};

class Prescriptions final : public host::PrescriptionObjects
{
public:
    explicit Prescriptions(host::PrescriptionObjects& objects)
        : m_objects(objects)
    {
    }
    [[nodiscard]] std::shared_ptr<host::PrescriptionSession> CreateSession() override
    {
        return Through(Kind::Create, [&] { return std::make_shared<Session>(); });
    }
    [[nodiscard]] std::unique_ptr<host::PrescriptionData>
    CreatePrescriptionData(std::int32_t kind, const host::HostServices& services) override
    {
        return Through(Kind::Create,
                       [&] { return std::make_unique<Data>(m_objects.CreatePrescriptionData(kind, Own(services))); });
    }

private:
    host::PrescriptionObjects& m_objects;
};

class Bridge final : public host::Bridge
{
public:
    explicit Bridge(host::Bridge& bridge)
        : m_bridge(bridge)
    {
    }
    [[nodiscard]] std::string CallSebMethod(const std::string& requestXml) override
    {
        const OutsideCall call(Kind::Bridge);
        call.FailIfDue();
        auto reply = m_bridge.CallSebMethod(requestXml);
        call.FailAfter(Kind::Replied);
        return reply;
    }

private:
    host::Bridge& m_bridge;
};

template <class Part, class Own>
std::shared_ptr<Own> InFront(std::shared_ptr<Own> part)
{
    return part ? std::make_shared<Part>(std::move(part)) : nullptr;
}

} // namespace

std::shared_ptr<host::Connection> Tortured(std::shared_ptr<host::Connection> connection)
{
    return InFront<Connection>(std::move(connection));
}

std::shared_ptr<host::LockSrv> Tortured(std::shared_ptr<host::LockSrv> lockSrv)
{
    return InFront<LockSrv>(std::move(lockSrv));
}

std::shared_ptr<host::Utils> Tortured(std::shared_ptr<host::Utils> utils)
{
    return InFront<Utils>(std::move(utils));
}

std::shared_ptr<host::Record> Tortured(std::shared_ptr<host::Record> record)
{
    return InFront<Record>(std::move(record));
}

struct TorturedOutside::Parts
{
    Bridge bridge;
    Objects objects;
    Prescriptions prescriptions;
};

TorturedOutside::TorturedOutside(const norda::Outside& outside)
    : m_parts(std::make_unique<Parts>(
          Parts{Bridge(*outside.bridge), Objects(*outside.objects), Prescriptions(*outside.prescriptions)}))
    , m_outside(outside)
{
    m_outside.bridge = &m_parts->bridge;
    m_outside.objects = &m_parts->objects;
    m_outside.prescriptions = &m_parts->prescriptions;
}

TorturedOutside::~TorturedOutside() = default;

} // namespace vellumo::torture
