#include "simulator/norda/server_databases.h"

#include "host/fault.h"
#include "host/text.h"
#include "simulator/norda/seed.h"

#include <algorithm>
#include <array>
#include <functional>
#include <string_view>
#include <utility>

namespace vellumo::norda
{
namespace
{

constexpr const char* practiceName = "VellumoProva_Studio";
constexpr const char* sharedName = "VellumoProva_Norda";
constexpr std::array<const char*, 2> names = {practiceName, sharedName};
constexpr const char* mark = "VellumoProva"; // an extended property of the databases that were made here
const std::string copies = "Copia_";         // how the names of the copies begin

// Keys of a connection string that lead to a database.
constexpr std::array<const char*, 5> databaseKeys = {
    "database=", "initialcatalog=", "attachdbfilename=", "dsn=", "filedsn="};

bool Exists(Database& master, const std::string& name)
{
    return !master.Single("SELECT database_id FROM sys.databases WHERE name = '" + name + "'").IsNull();
}

bool IsOurs(Database& master, const std::string& name)
{
    return !master
                .Single("SELECT name FROM " + name + ".sys.extended_properties WHERE class = 0 AND name = '" + mark +
                        "'")
                .IsNull();
}

void Drop(Database& master, const std::string& name)
{
    if (!Exists(master, name))
    {
        return;
    }
    if (!IsOurs(master, name))
    {
        throw host::Fault("Sul server c'è già un database di nome " + name +
                          " che non è di questa prova: non viene toccato. Rinominarlo, o usare un altro server.");
    }
    master.Execute("ALTER DATABASE " + name + " SET SINGLE_USER WITH ROLLBACK IMMEDIATE");
    master.Execute("DROP DATABASE " + name);
}

// A column with an identity takes a given value only when it is told so, one table of a connection at a time.
void WithKeys(Database& database, const std::string& table, const std::string& insert)
{
    database.Execute("SET IDENTITY_INSERT " + table + " ON");
    database.Execute(insert);
    database.Execute("SET IDENTITY_INSERT " + table + " OFF");
}

// The word behind `begin`, or the column behind "(".
std::string WordAfter(const std::string& text, std::string_view begin)
{
    const auto from = text.find_first_not_of(" \n", std::min(text.find(begin), text.size()) + begin.size());
    return text.substr(from, text.find_first_of(" ,\n", from) - from);
}

std::string ColumnsOf(Database& database, const std::string& table)
{
    const auto rows = database.Open("SELECT * FROM " + table + " WHERE 1 = 0");
    std::string columns;
    for (std::size_t i = 0; i < rows->ColumnCount(); ++i)
    {
        columns += (i == 0 ? "" : ", ") + rows->ColumnName(i);
    }
    return columns;
}

void Run(Database& database, const std::string& statement)
{
    constexpr std::string_view insert = "INSERT INTO ";
    if (statement.starts_with(insert))
    {
        const auto table = WordAfter(statement, insert);
        if (ColumnsOf(database, table).starts_with(WordAfter(statement, "(") + ','))
        {
            WithKeys(database, table, statement);
            return;
        }
    }
    database.Execute(statement);
}

void ForEachTable(Database& database,
                  const std::function<void(const std::string& table, const std::string& copy)>& work)
{
    for (const std::string place : {"", "Norda.."})
    {
        const auto copied = place + copies;
        for (const auto& table : TablesOf(database, place))
        {
            work(place + table, copied + table);
        }
    }
}

} // namespace

ServerDatabases::ServerDatabases(std::string connectionString)
    : m_connection(std::move(connectionString))
{
    auto keys = ';' + host::WithoutCase(m_connection);
    std::erase(keys, ' ');
    for (const auto* const key : databaseKeys)
    {
        const auto at = keys.find(host::WithoutCase(std::string(";") + key));
        if (at != std::string::npos)
        {
            throw host::Fault(
                std::string("La stringa di connessione non deve indicare un database né un'origine dati (") + key +
                "…): la prova crea ed elimina " + practiceName + " e " + sharedName + ".");
        }
    }
}

std::shared_ptr<Database> ServerDatabases::OpenMaster() const
{
    return Database::OpenServer(m_connection + ";Database=master", sharedName);
}

// Days are written year first in the seed and in scenarios, whatever the language of the user who is logged on. How
// texts compare, and which letters they have, depends on the database and not on the server.
std::shared_ptr<Database> ServerDatabases::Open() const
{
    auto database = Database::OpenServer(m_connection + ";Database=" + practiceName, sharedName);
    database->Execute("SET DATEFORMAT ymd");
    return database;
}

void ServerDatabases::Create() const
{
    Remove();
    const auto master = OpenMaster();
    for (const std::string name : names)
    {
        master->Execute("CREATE DATABASE " + name + " COLLATE Latin1_General_CI_AS");
        master->Execute("EXEC " + name + ".sys.sp_addextendedproperty @name = N'" + mark + "', @value = N'1'");
    }
    const auto database = Open();
    database->BeginTransaction();
    for (const auto script : {seed::schema, seed::shared, seed::practice, seed::certificates})
    {
        for (const auto& statement : Database::Statements(script))
        {
            Run(*database, statement);
        }
    }
    database->CommitTransaction();
    database->ExecuteScript(seed::views);
    ForEachTable(*database, [&](const std::string& table, const std::string& copy)
                 { database->Execute("SELECT * INTO " + copy + " FROM " + table); });
}

void ServerDatabases::Reset() const
{
    const auto database = Open();
    ForEachTable(*database,
                 [&](const std::string& table, const std::string& copy)
                 {
                     const auto columns = ColumnsOf(*database, table);
                     database->Execute("TRUNCATE TABLE " + table);
                     WithKeys(*database, table,
                              "INSERT INTO " + table + " (" + columns + ") SELECT " + columns + " FROM " + copy);
                 });
}

void ServerDatabases::Remove() const
{
    const auto master = OpenMaster();
    for (const std::string name : names)
    {
        Drop(*master, name);
    }
}

std::vector<std::string> TablesOf(Database& database, const std::string& place)
{
    const auto rows = database.Open(database.GetDialect() == Dialect::Sqlite
                                        ? "SELECT name FROM " + place +
                                              "sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite%'"
                                        : "SELECT name FROM " + std::string(place.empty() ? practiceName : sharedName) +
                                              ".sys.tables WHERE name NOT LIKE '" + copies + "%'");
    std::vector<std::string> tables;
    for (; !rows->IsAtEnd(); rows->MoveNext())
    {
        tables.push_back(rows->Field(0).ToText());
    }
    return tables;
}

} // namespace vellumo::norda
