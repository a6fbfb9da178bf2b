#include "platform/windows/adapters/dispatch_records.h"

#include "host/fault.h"
#include "platform/windows/adapters/host_names.h"

#include <algorithm>
#include <initializer_list>

namespace vellumo::windows
{
namespace
{

class DispatchRecord final : public host::Record
{
public:
    explicit DispatchRecord(LateBound record)
        : m_record(std::move(record))
    {
    }

    bool Load(std::int32_t id) override { return m_record.Call(m_load, Variant(host::Value(id))).Value().ToBoolean(); }
    void StartNew() override { m_record.Call(m_startNew); }
    host::Value Read(std::string_view column) const override
    {
        return m_record.Call(m_field, Variant::Text(column)).Value();
    }
    void Set(std::string_view column, const host::Value& value) override
    {
        m_record.Put(m_field, Variant::Text(column), Variant(value));
    }
    // A procedure, which answers nothing, has saved when it comes to its end.
    bool Save() override
    {
        const host::Value saved = m_record.Call(m_save).Value();
        return saved.IsNull() || saved.ToBoolean();
    }
    std::int32_t Id() const override { return m_record.Call(m_id).Value().ToInteger(); }

private:
    LateBound m_record;
    Member m_load{names::record::load};
    Member m_startNew{names::record::startNew};
    mutable Member m_field{names::record::field};
    Member m_save{names::record::save};
    mutable Member m_id{names::record::id};
};

class DispatchSettings final : public host::PracticeSettings
{
public:
    explicit DispatchSettings(LateBound settings)
        : m_settings(std::move(settings))
    {
    }

    bool Load(std::int32_t studio) override
    {
        return m_settings.Call(m_load, Variant(host::Value(studio))).Value().ToBoolean();
    }
    host::Value Read(std::string_view name) const override
    {
        return m_settings.Call(m_field, Variant::Text(name)).Value();
    }

private:
    LateBound m_settings;
    Member m_load{names::settings::load};
    mutable Member m_field{names::settings::field};
};

bool HasMembers(IDispatch& object, std::initializer_list<const wchar_t*> members)
{
    return std::ranges::all_of(members,
                               [&](const wchar_t* member)
                               {
                                   auto* name = const_cast<wchar_t*>(member); // the function does not write to it
                                   DISPID id = DISPID_UNKNOWN;
                                   return SUCCEEDED(object.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id));
                               });
}

} // namespace

std::unique_ptr<host::Record> MakeDispatchRecord(LateBound record)
{
    return std::make_unique<DispatchRecord>(std::move(record));
}

std::unique_ptr<host::Record> RecordIn(const VARIANT& variant, const HostNameMap& hostNames)
{
    const ComPtr<IDispatch> object = ToObject(variant);
    return object && HasMembers(*object.Get(), {hostNames.Of(names::record::field), hostNames.Of(names::record::save)})
               ? MakeDispatchRecord(LateBound(object, names::record::self, hostNames))
               : nullptr;
}

HostClass& DispatchHostObjects::ClassOf(host::RecordKind kind)
{
    switch (kind)
    {
    case host::RecordKind::Patient:
        return m_patient;
    case host::RecordKind::Asl:
        return m_asl;
    case host::RecordKind::Specialist:
        return m_specialist;
    }
    throw host::Fault("Tipo di record non previsto.");
}

void DispatchHostObjects::HandOver(const LateBound& object) const
{
    Member connection(names::record::connection);
    Member lockSrv(names::record::lockSrv);
    object.PutObject(connection, m_handles->connection.Get());
    object.PutObject(lockSrv, m_handles->lockSrv.Get());
}

std::unique_ptr<host::Record> DispatchHostObjects::CreateRecord(host::RecordKind kind,
                                                                const host::HostServices& services)
{
    LateBound record = ClassOf(kind).Create(m_handles->names);
    HandOver(record);
    if (kind == host::RecordKind::Patient)
    {
        Member studio(names::record::studio);
        record.Put(studio, Variant(host::Value(services.studio)));
    }
    return MakeDispatchRecord(std::move(record));
}

std::unique_ptr<host::PracticeSettings> DispatchHostObjects::CreateSettings(const host::HostServices&)
{
    LateBound settings = CreateByProgId(names::settingsProgId, m_handles->names);
    HandOver(settings);
    // The settings of some hosts read through the helpers, those of others do not know them.
    Member utils(names::settings::utils);
    host::PassOver([&] { settings.PutObject(utils, m_handles->utils.Get()); });
    return std::make_unique<DispatchSettings>(std::move(settings));
}

} // namespace vellumo::windows
