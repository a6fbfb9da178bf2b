#include "simulator/norda/strict_server.h"

#include "host/fault.h"
#include "host/text.h"
#include "simulator/norda/database.h"
#include "simulator/norda/database_fault.h"

#include <array>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace vellumo::norda
{
namespace
{

constexpr auto unspecified = static_cast<std::int32_t>(0x80004005U);
constexpr auto objectClosed = static_cast<std::int32_t>(0x800A0E78U);

class ClosedRecordset final : public host::Recordset
{
public:
    [[nodiscard]] bool IsAtEnd() const override { return true; } // so the library's adapters make of it
    void MoveNext() override { Refuse(); }
    [[nodiscard]] std::size_t ColumnCount() const override { return 0; }
    [[nodiscard]] std::string ColumnName(std::size_t) const override { Refuse(); }
    [[nodiscard]] host::Value Read(std::size_t) const override { Refuse(); }
    [[nodiscard]] host::Value Read(std::string_view) const override { Refuse(); }

private:
    [[noreturn]] static void Refuse()
    {
        throw host::Fault("Operation is not allowed when the object is closed.", objectClosed);
    }
};

struct ExtraColumn
{
    const char* name;
    SqlType type;
    const char* value;
};

// What hosts have in their tables for replication and for finding out who was faster.
constexpr std::array<ExtraColumn, 2> extraColumns = {{
    {"rowguid", SqlType::UniqueIdentifier, "{6F9619FF-8B86-D011-B42D-00C04FC964FF}"},
    {"Versione", SqlType::RowVersion, nullptr}, // bytes are no value of the library's
}};

class StrictRecordset final : public TypedRecordset
{
public:
    StrictRecordset(std::unique_ptr<host::Recordset> rows, std::shared_ptr<int> unread, bool withExtra)
        : m_rows(std::move(rows))
        , m_unread(std::move(unread))
        , m_extra(withExtra ? extraColumns.size() : 0)
    {
        for (std::size_t i = 0; i < m_rows->ColumnCount(); ++i)
        {
            m_types.push_back(TypeOfColumn(m_rows->ColumnName(i)));
        }
        m_counted = !m_rows->IsAtEnd();
        *m_unread += m_counted ? 1 : 0;
    }
    ~StrictRecordset() override { NoLongerUnread(); }
    StrictRecordset(const StrictRecordset&) = delete;
    StrictRecordset& operator=(const StrictRecordset&) = delete;

    [[nodiscard]] bool IsAtEnd() const override { return m_rows->IsAtEnd(); }
    void MoveNext() override
    {
        m_rows->MoveNext();
        m_taken.clear();
        if (m_rows->IsAtEnd())
        {
            NoLongerUnread();
        }
    }

    [[nodiscard]] std::size_t ColumnCount() const override { return m_types.size() + m_extra; }
    [[nodiscard]] std::string ColumnName(std::size_t column) const override
    {
        return column < m_types.size() ? m_rows->ColumnName(column) : extraColumns.at(column - m_types.size()).name;
    }
    [[nodiscard]] SqlType TypeOf(std::size_t column) const override
    {
        return column < m_types.size() ? m_types[column].type : extraColumns.at(column - m_types.size()).type;
    }

    [[nodiscard]] host::Value Read(std::size_t column) const override
    {
        if (column >= m_types.size())
        {
            const auto* const value = extraColumns.at(column - m_types.size()).value;
            return value != nullptr ? host::Value(value) : host::Value();
        }
        auto value = ShapedAs(m_types[column], m_rows->Read(column));
        const bool again = m_types[column].type == SqlType::Long && !m_taken.insert(column).second;
        return again ? host::Value() : value;
    }
    [[nodiscard]] host::Value Read(std::string_view name) const override
    {
        for (std::size_t i = 0; i < ColumnCount(); ++i)
        {
            if (host::EqualsIgnoringCase(ColumnName(i), name))
            {
                return Read(i);
            }
        }
        return m_rows->Read(name); // which says that there is none
    }

private:
    void NoLongerUnread() { *m_unread -= std::exchange(m_counted, false) ? 1 : 0; }

    std::unique_ptr<host::Recordset> m_rows;
    std::shared_ptr<int> m_unread;
    std::size_t m_extra;
    std::vector<ColumnType> m_types;
    mutable std::set<std::size_t> m_taken; // columns that can be read once and have been
    bool m_counted = false;
};

// What is wrong with a new value of that column, as an SQL condition; "" when any value will do.
std::string TooMuch(const std::string& name, const std::string& type)
{
    if (const auto open = type.find('('); type.starts_with("NVARCHAR(") && open != std::string::npos)
    {
        return "LENGTH(RTRIM(NEW." + name + ")) > " + type.substr(open + 1, type.find(')') - open - 1);
    }
    return "";
}

std::string Trigger(const std::string& schema, const std::string& table, const char* event, const std::string& when,
                    const char* message)
{
    static int number = 0;
    return "CREATE TEMP TRIGGER strict_" + std::to_string(++number) + " AFTER " + event + " ON " + schema + '.' +
           table + " WHEN " + when + " BEGIN SELECT RAISE(ABORT, '" + message + "'); END";
}

void EnforceColumns(Database& database, const std::string& schema, const std::string& table)
{
    std::string tooLong;
    std::string tooEarly;
    const auto columns = database.Open("SELECT name, type FROM pragma_table_info('" + table + "', '" + schema + "')");
    for (; !columns->IsAtEnd(); columns->MoveNext())
    {
        const auto name = columns->Field(0).ToText();
        const auto type = columns->Field(1).ToText();
        if (const auto condition = TooMuch(name, type); !condition.empty())
        {
            tooLong += (tooLong.empty() ? "" : " OR ") + condition;
        }
        if (type == "DATETIME")
        {
            tooEarly.append(tooEarly.empty() ? "" : " OR ").append("NEW." + name + " < '1753-01-01'");
        }
    }
    for (const auto* const event : {"INSERT", "UPDATE"})
    {
        if (!tooLong.empty())
        {
            database.Execute(Trigger(schema, table, event, tooLong, "String or binary data would be truncated."));
        }
        if (!tooEarly.empty())
        {
            database.Execute(Trigger(schema, table, event, tooEarly,
                                     "The conversion of a varchar data type to a datetime data type resulted in an "
                                     "out-of-range value."));
        }
    }
}

constexpr auto timeoutExpired = static_cast<std::int32_t>(0x80040E31U);

} // namespace

host::Fault FaultOf(ServerFault fault, const std::string& text)
{
    switch (fault)
    {
    case ServerFault::Deadlock:
        return DatabaseFault(
            "Transaction (Process ID 51) was deadlocked on lock resources with another process and has "
            "been chosen as the deadlock victim. Rerun the transaction.",
            unspecified);
    case ServerFault::Doomed:
        return DatabaseFault("Conversion failed when converting date and/or time from character string.",
                             databaseError);
    case ServerFault::Timeout:
        return DatabaseFault("Query timeout expired", timeoutExpired);
    case ServerFault::Lost:
        return DatabaseFault("[DBNETLIB][ConnectionWrite (send()).]General network error. Check your network "
                             "documentation.",
                             unspecified);
    case ServerFault::Reported:
        return DatabaseFault("[DBNETLIB][ConnectionRead (recv()).]General network error. Check your network "
                             "documentation.",
                             unspecified);
    case ServerFault::Plain:
        break;
    }
    return DatabaseFault(text);
}

void StrictServer::BeforeStatement(bool inTransaction)
{
    if (*m_unread == 0)
    {
        return;
    }
    if (inTransaction)
    {
        throw host::Fault("Cannot create new connection because in manual or distributed transaction mode.",
                          unspecified);
    }
    ++m_secondConnections;
}

void StrictServer::BeforeTransaction() const
{
    if (*m_unread != 0)
    {
        throw host::Fault("Cannot start transaction while in firehose mode.", unspecified);
    }
}

std::unique_ptr<host::Recordset> StrictServer::Show(std::unique_ptr<host::Recordset> rows, const std::string& sql) const
{
    if (rows->ColumnCount() == 0)
    {
        return std::make_unique<ClosedRecordset>();
    }
    return std::make_unique<StrictRecordset>(std::move(rows), m_unread, sql.starts_with("SELECT * "));
}

void EnforceColumns(Database& database)
{
    for (const std::string schema : {"main", "Norda"})
    {
        std::vector<std::string> tables;
        const auto rows = database.Open("SELECT name FROM " + schema +
                                        ".sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite%'");
        for (; !rows->IsAtEnd(); rows->MoveNext())
        {
            tables.push_back(rows->Field(0).ToText());
        }
        for (const auto& table : tables)
        {
            EnforceColumns(database, schema, table);
        }
    }
}

} // namespace vellumo::norda
