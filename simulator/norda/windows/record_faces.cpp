#include "simulator/norda/windows/faces.h"

#include "host/fault.h"
#include "host/host_services.h"
#include "platform/windows/adapters/host_names.h"
#include "simulator/norda/host_records.h"
#include "simulator/norda/windows/host_face.h"
#include "simulator/norda/windows/recordset_face.h"

#include <functional>

namespace vellumo::norda
{
namespace
{

using windows::ComPtr;
using windows::Variant;
namespace names = windows::names;

// What every object that the library creates takes before it is used.
class ServicedFace : public HostFace
{
protected:
    explicit ServicedFace(const wchar_t* name)
        : HostFace(name)
    {
        AddObject(names::record::connection, m_connection);
        AddObject(names::record::lockSrv, m_lockSrv);
    }

    [[nodiscard]] host::HostServices Services() const
    {
        host::HostServices services;
        services.connection = ConnectionOf(m_connection.Get());
        services.lockSrv = LockSrvOf(m_lockSrv.Get());
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
            [this](const Arguments& arguments) { return Variant(Record().Read(arguments.Text(0))); },
            [this](const Arguments& arguments)
            {
                Record().Set(arguments.Text(0), arguments.Value(1));
                return Variant();
            });
        AddMember(names::record::save,
                  [this](const Arguments&)
                  {
                      const bool saved = Record().Save();
                      const auto* const record = dynamic_cast<const SavingRecord*>(&Record());
                      const bool isProcedure = IsStrict() || (record != nullptr && record->SavesWithoutResult());
                      return saved && isProcedure ? Variant() : Variant(host::Value(saved));
                  });
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
    [[nodiscard]] host::Value Read(std::size_t column) const override
    {
        const host::PrescriptionKey& key = m_keys.at(m_row);
        return column == 0 ? key.IDRicetta : key.NumRicetta;
    }
    [[nodiscard]] host::Value Read(std::string_view name) const override
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
                  [this](const Arguments& arguments) { return Variant(Settings().Read(arguments.Text(0))); });
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

ComPtr<IDispatch> MakeRecordFace(std::shared_ptr<host::Record> record)
{
    return MakeFace<RecordFace>(std::move(record));
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

} // namespace vellumo::norda
