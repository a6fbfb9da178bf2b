// The simulated host's Utils and LockSrv, over its database.
#pragma once

#include "host/lock_srv.h"
#include "host/utils.h"
#include "simulator/norda/database.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vellumo::norda
{

class HostUtils final : public host::Utils
{
public:
    explicit HostUtils(std::shared_ptr<Database> database)
        : m_database(std::move(database))
    {
    }

    // From now on a look-up without a row answers 0 instead of null: there are hosts of either kind.
    void AnswerZeroWithoutRow() noexcept { m_withoutRow = 0; }
    // From now on it answers in either way in turn, and keys as texts.
    void BecomeStrict() noexcept { m_strict = true; }

    [[nodiscard]] std::unique_ptr<host::Recordset> OpenRecordset(const std::string& sql,
                                                                 const host::Parameters& parameters) override;
    [[nodiscard]] host::Value LookUpValue(const std::string& sql, const host::Parameters& parameters) override;
    [[nodiscard]] host::Value LookUpKey(const std::string& table, const std::string& keyColumn,
                                        const std::string& condition, const host::Parameters& parameters) override;
    void Execute(const std::string& sql, const host::Parameters& parameters) override;
    host::Value WriteRow(const std::string& table, const std::string& keyColumn, const host::Value& key,
                         const std::vector<host::ColumnValue>& columns) override;
    // Table SincronizzazioneTabella; null for a table that was never stored.
    [[nodiscard]] host::Value TableDate(const std::string& table) override;
    void StoreTableDate(const std::string& table, host::Date date, std::int32_t user) override;
    // Table GiornaleServizi.
    void RecordServiceError(const std::string& line) override;
    [[nodiscard]] bool ToBoolean(const host::Value& value) override { return value.ToBoolean(); }

private:
    [[nodiscard]] host::Value Key(host::Value key) const;

    std::shared_ptr<Database> m_database;
    host::Value m_withoutRow;
    host::Value m_otherWithoutRow = 0; // of a strict one, next time
    bool m_strict = false;
};

class HostLockSrv final : public host::LockSrv
{
public:
    // Empty: nobody is logged on, and asking who is faults.
    explicit HostLockSrv(std::optional<std::int32_t> user)
        : m_user(user)
    {
    }

    [[nodiscard]] std::int32_t UserId() override;

private:
    std::optional<std::int32_t> m_user;
};

// Writes one row: the way in which both Utils and the record objects store. Answers the key of the row.
host::Value StoreRow(Database& database, const std::string& table, const std::string& keyColumn, const host::Value& key,
                     const std::vector<host::ColumnValue>& columns);

} // namespace vellumo::norda
