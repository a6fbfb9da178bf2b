// A practice on disk: its database files, the host program's folder with the request templates, and the folders of the
// SISS client. Made from the seed, opened, logged on to.
//
//   <folder>/studio.db, norda.db      the practice's database and the shared one
//   <folder>/Norda/SISS/Templates     host program folder; the exchange log goes to Norda/SISS/Log
//   <folder>/AppSISS/SISS/Conf        SISS client, with the regional tables under Prerequisiti
#pragma once

#include "simulator/norda/database.h"
#include "simulator/norda/provider_client.h"
#include "simulator/norda/server_databases.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::norda
{

struct User
{
    std::int32_t id = 0;
    std::string logOn;
    std::string fullName;
    bool isDoctor = false;
};

class Practice
{
public:
    // The one practice of the seed.
    static constexpr std::int32_t studio = 1;

    // Names the folders; nothing is touched yet. With a `server`, a connection string, the two databases are on that.
    explicit Practice(std::filesystem::path folder, const std::string& server = {})
        : m_folder(std::move(folder))
        , m_server(server.empty() ? std::nullopt : std::optional<ServerDatabases>(server))
    {
    }

    [[nodiscard]] bool Exists() const;
    // Makes databases and folders new from the seed; what was there is replaced.
    void Create() const;
    // Made new as another one, which nobody has worked with since it was created. A server has only one of each
    // database: what was done to it is taken back.
    void CopyFrom(const std::filesystem::path& model) const;
    void RemoveServer() const;
    // Tells the installation where the host program and the SISS client are.
    void Register(Installation& machine) const;

    [[nodiscard]] std::shared_ptr<Database> Open() const;
    // Of a practice that need not outlive a power failure: waiting for the disk takes most of the time.
    [[nodiscard]] std::shared_ptr<Database> OpenFast() const;

    [[nodiscard]] const std::filesystem::path& Folder() const noexcept { return m_folder; }
    [[nodiscard]] std::filesystem::path HostFolder() const { return m_folder / "Norda"; }
    [[nodiscard]] std::filesystem::path SissFolder() const { return m_folder / "AppSISS"; }
    [[nodiscard]] std::filesystem::path TemplatesFolder() const { return HostFolder() / "SISS" / "Templates"; }
    [[nodiscard]] std::filesystem::path LogFolder() const { return HostFolder() / "SISS" / "Log"; }
    [[nodiscard]] std::filesystem::path TraceFolder() const { return HostFolder() / "SISS" / "Tracce"; }
    [[nodiscard]] std::filesystem::path ConfigFolder() const { return SissFolder() / "SISS" / "Conf"; }
    [[nodiscard]] std::filesystem::path TablesFolder() const;

private:
    [[nodiscard]] std::filesystem::path PracticeFile() const { return m_folder / "studio.db"; }
    [[nodiscard]] std::filesystem::path SharedFile() const { return m_folder / "norda.db"; }

    std::filesystem::path m_folder;
    std::optional<ServerDatabases> m_server;
};

// Empty when there is no such user.
[[nodiscard]] std::optional<User> FindUser(Database& database, std::string_view logOn);
[[nodiscard]] std::vector<User> Users(Database& database);

// Where the library looks for the two folders of `Register`.
namespace keys
{
inline constexpr std::string_view hostProgram = R"(SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths\Norda.exe)";
inline constexpr std::string_view sissClient = R"(Software\VB and VBA Program Settings\Norda\SISS)";
inline constexpr std::string_view path = "Path";
// Where hosts tell the SISS client who they are; made by its installation.
inline constexpr std::string_view hostIdentity = R"(Software\Lisit\SISS\ID\CC_0)";
} // namespace keys

} // namespace vellumo::norda
