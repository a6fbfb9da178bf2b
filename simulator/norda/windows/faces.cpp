#include "simulator/norda/windows/faces.h"

#include "host/fault.h"
#include "host/host_services.h"
#include "platform/windows/adapters/host_names.h"
#include "simulator/norda/windows/dispatch_face.h"
#include "simulator/norda/windows/recordset_face.h"

#include <kelnordaccelib.h>

#include <functional>

namespace vellumo::norda
{
namespace
{

using windows::ComPtr;
using windows::Variant;
namespace names = windows::names;

class ConnectionFace final : public DispatchFace
{
public:
    explicit ConnectionFace(std::shared_ptr<host::Connection> connection)
        : DispatchFace(names::connection::self)
        , m_connection(std::move(connection))
    {
        AddMember(names::connection::execute, [this](const Arguments& arguments)
                  { return Variant(MakeRecordsetFace(m_connection->Open(arguments.Text(0))).Get()); });
        AddMember(names::connection::beginTrans, [this](const Arguments&) { return BeginTrans(); });
        AddMember(names::connection::commitTrans,
                  [this](const Arguments&)
                  {
                      m_connection->CommitTransaction();
                      return Variant();
                  });
        AddMember(names::connection::rollbackTrans,
                  [this](const Arguments&)
                  {
                      m_connection->RollbackTransaction();
                      return Variant();
                  });
    }

    [[nodiscard]] const std::shared_ptr<host::Connection>& Native() const noexcept { return m_connection; }

private:
    Variant BeginTrans()
    {
        m_connection->BeginTransaction();
        return Variant(host::Value(1)); // the nesting level, as ADO answers it
    }

    std::shared_ptr<host::Connection> m_connection;
};

class LockSrvFace final : public DispatchFace
{
public:
    explicit LockSrvFace(std::shared_ptr<host::LockSrv> lockSrv)
        : DispatchFace(names::lockSrv::self)
        , m_lockSrv(std::move(lockSrv))
    {
        AddMember(names::lockSrv::userId,
                  [this](const Arguments&) { return Variant(host::Value(m_lockSrv->UserId())); });
    }

    [[nodiscard]] const std::shared_ptr<host::LockSrv>& Native() const noexcept { return m_lockSrv; }

private:
    std::shared_ptr<host::LockSrv> m_lockSrv;
};

class ServiceLogFace final : public DispatchFace
{
public:
    explicit ServiceLogFace(std::shared_ptr<host::Utils> utils)
        : DispatchFace(names::serviceLog::self)
        , m_utils(std::move(utils))
    {
        AddMember(names::serviceLog::write,
                  [this](const Arguments& arguments)
                  {
                      m_utils->RecordServiceError(arguments.Text(0));
                      return Variant();
                  });
    }

private:
    std::shared_ptr<host::Utils> m_utils;
};

// The first argument of most members is the library's object; a host takes its connection from it.
void RequireDatabaseProvider(const Arguments& arguments)
{
    const ComPtr<IDispatch> provider = arguments.Object(0);
    if (!provider.As<ICCEDatabaseProvider>(IID_ICCEDatabaseProvider))
    {
        throw host::Fault("Il primo argomento non è un ICCEDatabaseProvider.", DISP_E_TYPEMISMATCH);
    }
}

class UtilsFace final : public DispatchFace
{
public:
    explicit UtilsFace(std::shared_ptr<host::Utils> utils)
        : DispatchFace(names::utils::self)
        , m_utils(std::move(utils))
    {
        AddQueries();
        AddWrites();
        AddMember(names::utils::serviceLog,
                  [this](const Arguments&) { return Variant(MakeFace<ServiceLogFace>(m_utils).Get()); });
        AddMember(names::utils::toBoolean, [this](const Arguments& arguments)
                  { return Variant(host::Value(m_utils->ToBoolean(arguments.Value(0)))); });
    }

private:
    void AddWithProvider(const wchar_t* name, Body body)
    {
        AddMember(name,
                  [body = std::move(body)](const Arguments& arguments)
                  {
                      RequireDatabaseProvider(arguments);
                      return body(arguments);
                  });
    }

    void AddQueries()
    {
        AddWithProvider(names::utils::executeScalar, [this](const Arguments& arguments)
                        { return Variant(m_utils->LookUpValue(arguments.Text(1), arguments.Values(2))); });
        AddWithProvider(
            names::utils::openRecordset,
            [this](const Arguments& arguments) {
                return Variant(MakeRecordsetFace(m_utils->OpenRecordset(arguments.Text(1), arguments.Values(2))).Get());
            });
        AddWithProvider(names::utils::findKey,
                        [this](const Arguments& arguments) {
                            return Variant(m_utils->LookUpKey(arguments.Text(1), arguments.Text(2), arguments.Text(3),
                                                              arguments.Values(4)));
                        });
        AddWithProvider(names::utils::tableDate,
                        [this](const Arguments& arguments) { return Variant(m_utils->TableDate(arguments.Text(1))); });
    }

    void AddWrites()
    {
        AddWithProvider(names::utils::execute,
                        [this](const Arguments& arguments)
                        {
                            m_utils->Execute(arguments.Text(1), arguments.Values(2));
                            return Variant();
                        });
        AddWithProvider(names::utils::writeRow, [this](const Arguments& arguments) { return WriteRow(arguments); });
        AddWithProvider(names::utils::storeTableDate,
                        [this](const Arguments& arguments)
                        {
                            m_utils->StoreTableDate(arguments.Text(1), arguments.Value(2).ToDate(),
                                                    arguments.Integer(3));
                            return Variant();
                        });
    }

    Variant WriteRow(const Arguments& arguments)
    {
        const std::vector<host::Value> columns = arguments.Values(4);
        const std::vector<host::Value> values = arguments.Values(5);
        if (columns.size() != values.size())
        {
            throw host::Fault("Il numero dei valori non è quello delle colonne.");
        }
        std::vector<host::ColumnValue> row;
        for (std::size_t index = 0; index < columns.size(); ++index)
        {
            row.push_back({columns[index].ToText(), values[index]});
        }
        return Variant(m_utils->WriteRow(arguments.Text(1), arguments.Text(2), arguments.Value(3), row));
    }

    std::shared_ptr<host::Utils> m_utils;
};

class BridgeFace final : public DispatchFace
{
public:
    explicit BridgeFace(host::Bridge& bridge)
        : DispatchFace(names::bridgeProgId)
    {
        AddMember(names::callSebMethod, [&bridge](const Arguments& arguments)
                  { return Variant::Text(bridge.CallSebMethod(arguments.Text(0))); });
    }
};

// What every object that the library creates takes before it is used.
class ServicedFace : public DispatchFace
{
protected:
    explicit ServicedFace(const wchar_t* name)
        : DispatchFace(name)
    {
        AddObject(names::record::connection, m_connection);
        AddObject(names::record::lockSrv, m_lockSrv);
    }

    [[nodiscard]] host::HostServices Services() const
    {
        host::HostServices services;
        if (const auto* connection = dynamic_cast<ConnectionFace*>(From(m_connection.Get())))
        {
            services.connection = connection->Native();
        }
        if (const auto* lockSrv = dynamic_cast<LockSrvFace*>(From(m_lockSrv.Get())))
        {
            services.lockSrv = lockSrv->Native();
        }
        return services;
    }

    void AddObject(const wchar_t* name, ComPtr<IDispatch>& object)
    {
        AddMember(
            name, [&object](const Arguments&) { return Variant(object.Get()); },
            [&object](const Arguments& arguments)
            {
                object = arguments.Object(0);
                return Variant();
            });
    }

private:
    ComPtr<IDispatch> m_connection;
    ComPtr<IDispatch> m_lockSrv;
};

class RecordFace final : public ServicedFace
{
public:
    // Makes the record when it is first used, of what it has been handed until then.
    using Maker = std::function<std::shared_ptr<host::Record>(const host::HostServices& services)>;
    explicit RecordFace(Maker make)
        : ServicedFace(names::record::self)
        , m_make(std::move(make))
    {
        AddMember(
            names::record::studio, [this](const Arguments&) { return Variant(host::Value(m_studio)); },
            [this](const Arguments& arguments)
            {
                m_studio = arguments.Integer(0);
                return Variant();
            });
        AddMember(names::record::load, [this](const Arguments& arguments)
                  { return Variant(host::Value(Record().Load(arguments.Integer(0)))); });
        AddMember(names::record::startNew,
                  [this](const Arguments&)
                  {
                      Record().StartNew();
                      return Variant();
                  });
        AddMember(
            names::record::field,
            [this](const Arguments& arguments) { return Variant(Record().Get(arguments.Text(0))); },
            [this](const Arguments& arguments)
            {
                Record().Set(arguments.Text(0), arguments.Value(1));
                return Variant();
            });
        AddMember(names::record::save, [this](const Arguments&) { return Variant(host::Value(Record().Save())); });
        AddMember(names::record::id, [this](const Arguments&) { return Variant(host::Value(Record().Id())); });
    }

    // Over a record that is loaded already.
    explicit RecordFace(std::shared_ptr<host::Record> record)
        : RecordFace(Maker())
    {
        m_record = std::move(record);
    }

private:
    host::Record& Record()
    {
        if (!m_record)
        {
            host::HostServices services = Services();
            services.studio = m_studio;
            m_record = m_make(services);
        }
        return *m_record;
    }

    Maker m_make;
    std::int32_t m_studio = 0;
    std::shared_ptr<host::Record> m_record;
};

// The keys of a list of prescriptions, as a result of the database.
class KeyRows final : public host::Recordset
{
public:
    explicit KeyRows(std::vector<host::PrescriptionKey> keys)
        : m_keys(std::move(keys))
    {
    }
    [[nodiscard]] bool IsAtEnd() const override { return m_row >= m_keys.size(); }
    void MoveNext() override { ++m_row; }
    [[nodiscard]] std::size_t ColumnCount() const override { return 2; }
    [[nodiscard]] std::string ColumnName(std::size_t column) const override
    {
        return column == 0 ? "IDRicetta" : "NumRicetta";
    }
    [[nodiscard]] host::Value Field(std::size_t column) const override
    {
        const host::PrescriptionKey& key = m_keys.at(m_row);
        return column == 0 ? key.IDRicetta : key.NumRicetta;
    }
    [[nodiscard]] host::Value Field(std::string_view name) const override
    {
        return Field(name == "IDRicetta" ? 0U : 1U);
    }

private:
    std::vector<host::PrescriptionKey> m_keys;
    std::size_t m_row = 0;
};

class PrescriptionDataFace final : public ServicedFace
{
public:
    explicit PrescriptionDataFace(host::PrescriptionObjects& objects)
        : ServicedFace(names::prescriptionData::self)
        , m_objects(objects)
    {
        AddObject(names::prescriptionData::utils, m_utils);
        AddMember(
            names::prescriptionData::kind, [this](const Arguments&) { return Variant(host::Value(m_kind)); },
            [this](const Arguments& arguments)
            {
                m_kind = arguments.Integer(0);
                return Variant();
            });
        AddMember(names::prescriptionData::list,
                  [this](const Arguments& arguments)
                  {
                      return Variant(MakeRecordsetFace(std::make_unique<KeyRows>(
                                                           Data().List(arguments.Integer(0), arguments.Integer(1))))
                                         .Get());
                  });
        AddMember(names::prescriptionData::find,
                  [this](const Arguments& arguments)
                  {
                      auto row = Data().Find({arguments.Integer(0), arguments.Integer(1)});
                      return row ? Variant(MakeFace<RecordFace>(std::move(row)).Get())
                                 : Variant(static_cast<IDispatch*>(nullptr));
                  });
    }

private:
    host::PrescriptionData& Data()
    {
        if (!m_utils)
        {
            throw host::Fault("I dati delle ricette non hanno ricevuto l'oggetto Utils.");
        }
        if (!m_data)
        {
            m_data = m_objects.CreatePrescriptionData(m_kind, Services());
        }
        return *m_data;
    }

    host::PrescriptionObjects& m_objects;
    ComPtr<IDispatch> m_utils;
    std::int32_t m_kind = 0;
    std::unique_ptr<host::PrescriptionData> m_data;
};

// An object of the library in the hands of the host.
struct HeldObject final : host::KeptObject
{
    explicit HeldObject(ComPtr<IDispatch> held)
        : object(std::move(held))
    {
    }
    ComPtr<IDispatch> object;
};

class SessionFace final : public DispatchFace
{
public:
    explicit SessionFace(std::shared_ptr<PrescriptionSession> session)
        : DispatchFace(names::session::self)
        , m_session(std::move(session))
    {
        AddMember(
            names::session::withoutSiss,
            [this](const Arguments&) { return Variant(host::Value(m_session->SenzaSISS())); },
            [this](const Arguments& arguments)
            {
                m_session->SetSenzaSISS(arguments.Value(0).ToBoolean());
                return Variant();
            });
        AddMember(
            names::session::toValidate,
            [this](const Arguments&) { return Variant(host::Value(m_session->DaValidare())); },
            [this](const Arguments& arguments)
            {
                m_session->SetDaValidare(arguments.Value(0).ToBoolean());
                return Variant();
            });
        AddMember(
            names::session::options,
            [this](const Arguments&) { return Variant(ObjectOf(m_session->KeptOptions()).Get()); },
            [this](const Arguments& arguments)
            {
                m_session->KeepOptions(std::make_shared<HeldObject>(arguments.Object(0)));
                return Variant();
            });
        AddResponses();
    }

    [[nodiscard]] const std::shared_ptr<PrescriptionSession>& Native() const noexcept { return m_session; }

private:
    void AddResponses()
    {
        AddMember(names::session::addResponse,
                  [this](const Arguments& arguments)
                  {
                      m_session->AddResponse(arguments.Integer(0), std::make_shared<HeldObject>(arguments.Object(1)));
                      return Variant();
                  });
        AddMember(names::session::responseCount,
                  [this](const Arguments& arguments) {
                      return Variant(
                          host::Value(static_cast<std::int32_t>(m_session->ResponseCount(arguments.Integer(0)))));
                  });
        AddMember(names::session::response,
                  [this](const Arguments& arguments)
                  {
                      const auto position = static_cast<std::size_t>(arguments.Integer(1));
                      return Variant(ObjectOf(m_session->Response(arguments.Integer(0), position)).Get());
                  });
    }

    std::shared_ptr<PrescriptionSession> m_session;
};

class SettingsFace final : public ServicedFace
{
public:
    explicit SettingsFace(host::HostObjects& objects)
        : ServicedFace(names::settings::self)
        , m_objects(objects)
    {
        AddMember(names::settings::utils, {},
                  [this](const Arguments&)
                  {
                      m_handedUtils = true;
                      return Variant();
                  });
        AddMember(names::settings::load, [this](const Arguments& arguments)
                  { return Variant(host::Value(Settings().Load(arguments.Integer(0)))); });
        AddMember(names::settings::field,
                  [this](const Arguments& arguments) { return Variant(Settings().Get(arguments.Text(0))); });
    }

private:
    host::PracticeSettings& Settings()
    {
        if (!m_handedUtils)
        {
            throw host::Fault("Le impostazioni si leggono attraverso Utils, che manca.");
        }
        if (!m_settings)
        {
            m_settings = m_objects.CreateSettings(Services());
        }
        return *m_settings;
    }

    host::HostObjects& m_objects;
    std::unique_ptr<host::PracticeSettings> m_settings;
    bool m_handedUtils = false;
};

} // namespace

ComPtr<IDispatch> MakeConnectionFace(std::shared_ptr<host::Connection> connection)
{
    return MakeFace<ConnectionFace>(std::move(connection));
}

ComPtr<IDispatch> MakeLockSrvFace(std::shared_ptr<host::LockSrv> lockSrv)
{
    return MakeFace<LockSrvFace>(std::move(lockSrv));
}

ComPtr<IDispatch> MakeRecordFace(std::shared_ptr<host::Record> record)
{
    return MakeFace<RecordFace>(std::move(record));
}

ComPtr<IDispatch> MakeUtilsFace(std::shared_ptr<host::Utils> utils)
{
    return MakeFace<UtilsFace>(std::move(utils));
}

ComPtr<IDispatch> MakeBridgeFace(host::Bridge& bridge)
{
    return MakeFace<BridgeFace>(bridge);
}

ComPtr<IDispatch> MakeRecordFace(host::HostObjects& objects, host::RecordKind kind)
{
    return MakeFace<RecordFace>(RecordFace::Maker([&objects, kind](const host::HostServices& services)
                                                  { return objects.CreateRecord(kind, services); }));
}

ComPtr<IDispatch> MakeSettingsFace(host::HostObjects& objects)
{
    return MakeFace<SettingsFace>(objects);
}

ComPtr<IDispatch> MakePrescriptionDataFace(host::PrescriptionObjects& objects)
{
    return MakeFace<PrescriptionDataFace>(objects);
}

ComPtr<IDispatch> MakeSessionFace(std::shared_ptr<PrescriptionSession> session)
{
    return MakeFace<SessionFace>(std::move(session));
}

std::shared_ptr<PrescriptionSession> SessionOf(IDispatch* face)
{
    const auto* const session = dynamic_cast<SessionFace*>(DispatchFace::From(face));
    return session ? session->Native() : nullptr;
}

ComPtr<IDispatch> ObjectOf(const std::shared_ptr<host::KeptObject>& kept)
{
    const auto held = std::dynamic_pointer_cast<HeldObject>(kept);
    return held ? held->object : nullptr;
}

} // namespace vellumo::norda
