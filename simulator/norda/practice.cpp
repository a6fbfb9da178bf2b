#include "simulator/norda/practice.h"

#include "simulator/norda/ansi_file.h"
#include "simulator/norda/platform.h"
#include "simulator/norda/seed.h"

#include <algorithm>

namespace vellumo::norda
{

namespace fs = std::filesystem;

namespace
{

std::string WindowsPath(const fs::path& path)
{
    const auto text = path.generic_u8string();
    std::string windows(text.begin(), text.end());
    std::replace(windows.begin(), windows.end(), '/', '\\');
    return windows;
}

// Beside the program; in the SDK, which has them once, above the folders of the programs.
fs::path GivenTemplates()
{
    const auto beside = ProgramFolder() / "templates";
    return fs::exists(beside) ? beside : ProgramFolder() / ".." / ".." / "templates";
}

User ReadUser(const host::Recordset& rows)
{
    return {rows.Field("IDUtente").ToInteger(), rows.Field("Utente").ToText(),
            rows.Field("Nome").ToText() + ' ' + rows.Field("Cognome").ToText(), !rows.Field("IDSpecialista").IsNull()};
}

constexpr auto usersSql =
    "SELECT Utente.IDUtente, Utente.Utente, Utente.Nome, Utente.Cognome, Specialista.IDSpecialista "
    "FROM Utente LEFT JOIN Specialista ON Specialista.IDUtente = Utente.IDUtente";

} // namespace

fs::path Practice::TablesFolder() const
{
    return SissFolder() / "SISS" / "Prerequisiti" / "mysql" / "data" / "imp_test" / "sau";
}

bool Practice::Exists() const
{
    return fs::exists(PracticeFile()) && fs::exists(SharedFile());
}

void Practice::Create() const
{
    fs::create_directories(m_folder);
    fs::remove(PracticeFile());
    fs::remove(SharedFile());
    if (m_server)
    {
        m_server->Create();
    }
    else
    {
        // Every statement on its own would wait for the disk.
        const auto database = Database::OpenSqlite(PracticeFile(), SharedFile());
        database->BeginTransaction();
        for (const auto script : {seed::schema, seed::shared, seed::practice, seed::certificates})
        {
            database->ExecuteScript(script);
        }
        database->CommitTransaction();
    }
    for (const auto& folder : {HostFolder(), SissFolder()})
    {
        fs::remove_all(folder);
    }
    for (const auto& folder : {TemplatesFolder(), ConfigFolder(), TablesFolder()})
    {
        fs::create_directories(folder);
    }
    for (const auto& file : fs::directory_iterator(GivenTemplates()))
    {
        fs::copy_file(file.path(), TemplatesFolder() / file.path().filename());
    }
    WriteAnsiFile(ConfigFolder() / "WINBRIDGE4SEBACTIVEX.conf", seed::bridgeConf);
    WriteAnsiFile(TablesFolder() / "master.txt", seed::masterTable);
    WriteAnsiFile(TablesFolder() / "esenzioni.txt", seed::exemptionTable);
    WriteAnsiFile(TablesFolder() / "branche.txt", seed::branchTable);
    WriteAnsiFile(TablesFolder() / "mapping.txt", seed::mappingTable);
}

void Practice::Register(Installation& machine) const
{
    machine.SetMachineText(keys::hostProgram, keys::path, WindowsPath(fs::absolute(HostFolder())));
    machine.RemoveMachineKey(keys::hostIdentity);
    machine.AddMachineKey(keys::hostIdentity);
    machine.SetUserText(keys::sissClient, keys::path, WindowsPath(fs::absolute(SissFolder())));
}

std::shared_ptr<Database> Practice::Open() const
{
    if (m_server)
    {
        return m_server->Open();
    }
    auto database = Database::OpenSqlite(PracticeFile(), SharedFile());
    database->ExecuteScript(seed::views);
    return database;
}

std::shared_ptr<Database> Practice::OpenFast() const
{
    auto database = Open();
    if (!m_server)
    {
        database->Execute("PRAGMA main.synchronous = OFF");
        database->Execute("PRAGMA Norda.synchronous = OFF");
    }
    return database;
}

// Folder by folder: the standard library for Windows cannot copy a tree.
void Practice::CopyFrom(const fs::path& model) const
{
    if (m_server)
    {
        m_server->Reset();
    }
    fs::remove_all(m_folder);
    fs::create_directories(m_folder);
    for (const auto& entry : fs::recursive_directory_iterator(model))
    {
        const auto copy = m_folder / entry.path().lexically_relative(model);
        if (entry.is_directory())
        {
            fs::create_directories(copy);
        }
        else
        {
            fs::copy_file(entry.path(), copy);
        }
    }
}

void Practice::RemoveServer() const
{
    if (m_server)
    {
        m_server->Remove();
    }
}

std::optional<User> FindUser(Database& database, std::string_view logOn)
{
    const auto rows =
        database.Open(std::string(usersSql) + PutIn(database.GetDialect(), " WHERE Utente.Utente = {0}", {logOn}));
    return rows->IsAtEnd() ? std::nullopt : std::optional(ReadUser(*rows));
}

std::vector<User> Users(Database& database)
{
    std::vector<User> users;
    for (const auto rows = database.Open(std::string(usersSql) + " ORDER BY Utente.IDUtente"); !rows->IsAtEnd();
         rows->MoveNext())
    {
        users.push_back(ReadUser(*rows));
    }
    return users;
}

} // namespace vellumo::norda
