#include "platform/windows/adapters/dispatch_services.h"

#include "host/fault.h"
#include "platform/windows/adapters/ado.h"

namespace vellumo::windows
{

DispatchUtils::DispatchUtils(ComPtr<IDispatch> utils, IDispatch* provider, const HostNameMap& hostNames)
    : m_utils(std::move(utils), names::utils::self, hostNames)
    , m_provider(provider)
{
}

host::Value DispatchUtils::LookUpValue(const std::string& sql, const host::Parameters& parameters)
{
    return m_utils.Call(m_executeScalar, Provider(), Variant::Text(sql), Variant(parameters)).Value();
}

std::unique_ptr<host::Recordset> DispatchUtils::OpenRecordset(const std::string& sql,
                                                              const host::Parameters& parameters)
{
    return std::make_unique<AdoRecordset>(
        m_utils.Call(m_openRecordset, Provider(), Variant::Text(sql), Variant(parameters)).Object(),
        m_utils.HostNames());
}

host::Value DispatchUtils::LookUpKey(const std::string& table, const std::string& keyColumn,
                                     const std::string& condition, const host::Parameters& parameters)
{
    return m_utils
        .Call(m_findKey, Provider(), Variant::Text(table), Variant::Text(keyColumn), Variant::Text(condition),
              Variant(parameters))
        .Value();
}

void DispatchUtils::Execute(const std::string& sql, const host::Parameters& parameters)
{
    m_utils.Call(m_execute, Provider(), Variant::Text(sql), Variant(parameters));
}

host::Value DispatchUtils::WriteRow(const std::string& table, const std::string& keyColumn, const host::Value& key,
                                    const std::vector<host::ColumnValue>& columns)
{
    std::vector<host::Value> names;
    std::vector<host::Value> values;
    for (const host::ColumnValue& each : columns)
    {
        names.emplace_back(each.column);
        values.push_back(each.value);
    }
    return m_utils
        .Call(m_writeRow, Provider(), Variant::Text(table), Variant::Text(keyColumn), Variant(key), Variant(names),
              Variant(values))
        .Value();
}

host::Value DispatchUtils::TableDate(const std::string& table)
{
    return m_utils.Call(m_tableDate, Provider(), Variant::Text(table)).Value();
}

void DispatchUtils::StoreTableDate(const std::string& table, host::Date date, std::int32_t user)
{
    m_utils.Call(m_storeTableDate, Provider(), Variant::Text(table), Variant(host::Value::DateOrNull(date)),
                 Variant(host::Value(user)));
}

void DispatchUtils::RecordServiceError(const std::string& line)
{
    const LateBound log(m_utils.Call(m_serviceLog).Object(), names::serviceLog::self, m_utils.HostNames());
    log.Call(m_write, Variant::Text(line));
}

bool DispatchUtils::ToBoolean(const host::Value& value)
{
    return m_utils.Call(m_toBoolean, Variant(value)).Value().ToBoolean();
}

DispatchLockSrv::DispatchLockSrv(ComPtr<IDispatch> lockSrv, const HostNameMap& hostNames)
    : m_lockSrv(std::move(lockSrv), names::lockSrv::self, hostNames)
{
}

std::int32_t DispatchLockSrv::UserId()
{
    const auto user = m_lockSrv.Call(m_userId).Value();
    if (user.IsNull())
    {
        // 0 would be a user without a row among the specialists, and the doctor would count as staff.
        throw host::Fault("LockSrv non ha indicato l'utente collegato.");
    }
    return user.ToInteger();
}

} // namespace vellumo::windows
