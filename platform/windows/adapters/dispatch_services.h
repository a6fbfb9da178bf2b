// What the host hands to the provider, reached late-bound: its query helpers and its lock service.
#pragma once

#include "host/lock_srv.h"
#include "host/utils.h"
#include "platform/windows/adapters/host_names.h"
#include "platform/windows/adapters/late_bound.h"

namespace vellumo::windows
{

class DispatchUtils final : public host::Utils
{
public:
    // `provider` is the provider's own ICCEDatabaseProvider face, which the helpers take the connection from. It is not
    // counted: the provider owns this adapter, and a counted reference would keep both alive for ever.
    DispatchUtils(ComPtr<IDispatch> utils, IDispatch* provider, const HostNameMap& hostNames = HostNameMap::Compiled());

    [[nodiscard]] std::unique_ptr<host::Recordset> OpenRecordset(const std::string& sql,
                                                                 const host::Parameters& parameters) override;
    void Execute(const std::string& sql, const host::Parameters& parameters) override;
    host::Value WriteRow(const std::string& table, const std::string& keyColumn, const host::Value& key,
                         const std::vector<host::ColumnValue>& columns) override;
    [[nodiscard]] host::Value TableDate(const std::string& table) override;
    void StoreTableDate(const std::string& table, host::Date date, std::int32_t user) override;
    void RecordServiceError(const std::string& line) override;
    [[nodiscard]] bool ToBoolean(const host::Value& value) override;
    [[nodiscard]] host::Value LookUpValue(const std::string& sql, const host::Parameters& parameters) override;
    [[nodiscard]] host::Value LookUpKey(const std::string& table, const std::string& keyColumn,
                                        const std::string& condition, const host::Parameters& parameters) override;

private:
    [[nodiscard]] Variant Provider() const { return Variant(m_provider); }

    LateBound m_utils;
    IDispatch* m_provider;
    Member m_executeScalar{names::utils::executeScalar};
    Member m_openRecordset{names::utils::openRecordset};
    Member m_findKey{names::utils::findKey};
    Member m_execute{names::utils::execute};
    Member m_writeRow{names::utils::writeRow};
    Member m_tableDate{names::utils::tableDate};
    Member m_storeTableDate{names::utils::storeTableDate};
    Member m_serviceLog{names::utils::serviceLog};
    Member m_write{names::serviceLog::write};
    Member m_toBoolean{names::utils::toBoolean};
};

class DispatchLockSrv final : public host::LockSrv
{
public:
    explicit DispatchLockSrv(ComPtr<IDispatch> lockSrv, const HostNameMap& hostNames = HostNameMap::Compiled());

    [[nodiscard]] std::int32_t UserId() override;

private:
    LateBound m_lockSrv;
    Member m_userId{names::lockSrv::userId};
};

} // namespace vellumo::windows
