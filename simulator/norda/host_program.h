// The simulated host's program while it runs: what it hands to the library, the provider that it loads and the
// prescribing session that it keeps. It sees each statement of the library, and makes those fail that are to. Both are
// gone with the object.
#pragma once

#include "simulator/norda/host_records.h"
#include "simulator/norda/host_utils.h"
#include "simulator/norda/practice.h"
#include "simulator/norda/workstation.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vellumo::norda
{

// A statement of the database that is to fail.
struct StatementFault
{
    std::string pattern;    // part of its text, in any case; "" is in every statement
    std::size_t number = 0; // which of those; 0: each
    std::string message;
    ServerFault kind = ServerFault::Plain;
    std::size_t met = 0;
    bool fired = false;
};

class HostProgram
{
public:
    // Workstation and bridge outlive it. `user` is logged on.
    HostProgram(Workstation& workstation, std::shared_ptr<Database> database, host::Bridge& bridge, std::int32_t user);
    ~HostProgram();
    HostProgram(const HostProgram&) = delete;
    HostProgram& operator=(const HostProgram&) = delete;

    [[nodiscard]] const std::shared_ptr<Database>& TheDatabase() const noexcept { return m_database; }
    [[nodiscard]] HostUtils& Utils() noexcept { return *m_utils; }
    [[nodiscard]] HostObjects& Objects() noexcept { return m_objects; }
    [[nodiscard]] PrescriptionObjects& Prescriptions() noexcept { return m_prescriptions; }

    // Empty: nobody. Takes effect at once.
    void LogOn(std::optional<std::int32_t> user);
    void SetStudio(std::int32_t studio);
    // "Connection", "LockSrv" or "Utils": the host does not hand it over (any more).
    void Withhold(const std::string& part);
    void RemoveBridge() noexcept { m_bridge = nullptr; }
    // From now on it behaves as real ones and their servers do wherever the library can notice.
    void BecomeStrict();
    // Those that a strict host's connection opened silently, for a result beside an open one.
    [[nodiscard]] std::size_t SecondConnections() const noexcept;
    // On Windows: its objects have other names than those that the library expects. The folder is for a copy of it.
    void Rename(const std::filesystem::path& folder) { m_renamedIn = folder; }
    // As a host does that finds a transaction open which the library could not end.
    void RollBack();
    // As it would before it hands the certificate over. Faults when there is none.
    [[nodiscard]] std::shared_ptr<host::Record> LoadCertificate(std::int32_t id);

    // The provider; made by the first call of it, everything handed over. Faults as creating it does.
    [[nodiscard]] ProviderClient& Provider();
    // Lets go of the session and the provider; True when nothing of the library is left, or there was none.
    [[nodiscard]] bool ReleaseProvider();
    // The same while a call of the provider may be running; the next one, which comes after that, makes another. Faults
    // natively.
    void LetGoOfProvider();
    // What the host has, handed over (again).
    void HandOver();
    // The session that the host keeps; null before the first is opened.
    std::shared_ptr<PrescriptionSession> session;

    // Returns the fault as it stands at any time.
    std::shared_ptr<const StatementFault> AddFault(StatementFault fault)
    {
        return m_faults.emplace_back(std::make_shared<StatementFault>(std::move(fault)));
    }
    // Those that have not come by now do not come any more.
    void FailNoMore() noexcept { m_faults.clear(); }
    // From now on each statement of the library takes that long, as on a busy server.
    void SetPace(std::chrono::milliseconds pace) noexcept { m_pace = pace; }
    // Hears of each statement of the library before it is run.
    void SetStatementSeen(std::function<void()> seen) { m_statementSeen = std::move(seen); }
    // Statements of the library so far.
    [[nodiscard]] const std::vector<std::string>& Statements() const noexcept { return m_statements; }
    // Those that contain the text, in any case.
    [[nodiscard]] std::size_t CountStatements(const std::string& part) const;

private:
    class OwnWork;

    void BeforeStatement(const std::string& sql);
    [[nodiscard]] bool IsStrict() const noexcept { return m_database->Strictness() != nullptr; }

    Workstation& m_workstation;
    host::Bridge* m_bridge; // null: none is installed
    HostObjects m_objects;
    PrescriptionObjects m_prescriptions;
    std::shared_ptr<Database> m_database;
    std::shared_ptr<HostUtils> m_utils;
    std::shared_ptr<HostLockSrv> m_lockSrv;
    std::int32_t m_studio = Practice::studio;
    std::set<std::string> m_withheld;
    std::filesystem::path m_renamedIn;
    std::vector<std::shared_ptr<StatementFault>> m_faults;
    std::vector<std::string> m_statements;
    std::chrono::milliseconds m_pace{0};
    std::function<void()> m_statementSeen;
    bool m_isOwnWork = false;
    std::unique_ptr<ProviderClient> m_provider;
    std::unique_ptr<ProviderClient> m_letGo; // a call of it may be running
};

} // namespace vellumo::norda
