#include "simulator/norda/host_utils.h"

#include "host/clock.h"
#include "host/database_contract.h"
#include "host/fault.h"

#include <utility>

namespace vellumo::norda
{

host::Value StoreRow(Database& database, const std::string& table, const std::string& keyColumn, const host::Value& key,
                     const std::vector<host::ColumnValue>& columns)
{
    const auto dialect = database.GetDialect();
    const char* comma = "";
    if (key.IsNull())
    {
        std::string names;
        std::string values;
        for (const auto& [name, value] : columns)
        {
            names.append(comma).append(name);
            values.append(comma).append(Literal(dialect, value));
            comma = ", ";
        }
        database.Execute("INSERT INTO " + table + " (" + names + ") VALUES (" + values + ")");
        return database.LastKey();
    }
    if (!columns.empty())
    {
        std::string sql = "UPDATE " + table + " SET ";
        for (const auto& [name, value] : columns)
        {
            sql.append(comma).append(name).append(" = ").append(Literal(dialect, value));
            comma = ", ";
        }
        database.Execute(sql.append(" WHERE ").append(keyColumn).append(" = ").append(Literal(dialect, key)));
    }
    return key;
}

namespace
{

// A host whose tables are those of the contract has no other column.
void RequireInContract(const std::string& table, const std::string& column)
{
    if (!host::MayUseColumn(table, column))
    {
        throw host::Fault("Il contratto non nomina la colonna " + table + '.' + column + '.');
    }
}

} // namespace

host::Value HostUtils::LookUpValue(const std::string& sql, const host::Parameters& parameters)
{
    const auto rows = OpenRecordset(sql, parameters);
    if (rows->IsAtEnd() && m_strict)
    {
        std::swap(m_withoutRow, m_otherWithoutRow);
    }
    return rows->IsAtEnd() ? m_withoutRow : rows->Read(0);
}

std::unique_ptr<host::Recordset> HostUtils::OpenRecordset(const std::string& sql, const host::Parameters& parameters)
{
    return m_database->Open(PutIn(m_database->GetDialect(), sql, parameters));
}

host::Value HostUtils::LookUpKey(const std::string& table, const std::string& keyColumn, const std::string& condition,
                                 const host::Parameters& parameters)
{
    RequireInContract(table, keyColumn);
    return Key(LookUpValue("SELECT " + keyColumn + " FROM " + table + " WHERE " + condition, parameters));
}

host::Value HostUtils::Key(host::Value key) const
{
    return m_strict && !key.IsNull() ? host::Value(key.ToText()) : std::move(key);
}

void HostUtils::Execute(const std::string& sql, const host::Parameters& parameters)
{
    m_database->Execute(PutIn(m_database->GetDialect(), sql, parameters));
}

host::Value HostUtils::WriteRow(const std::string& table, const std::string& keyColumn, const host::Value& key,
                                const std::vector<host::ColumnValue>& columns)
{
    RequireInContract(table, keyColumn);
    for (const auto& [name, value] : columns)
    {
        RequireInContract(table, name);
    }
    return Key(StoreRow(*m_database, table, keyColumn, key, columns));
}

host::Value HostUtils::TableDate(const std::string& table)
{
    return SingleValue("SELECT Data FROM SincronizzazioneTabella WHERE Tabella = {0}", {table});
}

void HostUtils::StoreTableDate(const std::string& table, host::Date date, std::int32_t user)
{
    const auto key = FindKey("SincronizzazioneTabella", "IDSincronizzazioneTabella", "Tabella = {0}", {table});
    WriteRow("SincronizzazioneTabella", "IDSincronizzazioneTabella", key,
             {{"Tabella", table}, {"Data", host::Value::DateOrNull(date)}, {"IDUtente", user}});
}

void HostUtils::RecordServiceError(const std::string& line)
{
    WriteRow("GiornaleServizi", "IDGiornaleServizi", {}, {{"Data", host::SystemClock().Now()}, {"Riga", line}});
}

std::int32_t HostLockSrv::UserId()
{
    if (!m_user)
    {
        throw host::Fault("Nessun utente è collegato.");
    }
    return *m_user;
}

} // namespace vellumo::norda
