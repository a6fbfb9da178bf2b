// The world of one scenario: a practice made new in a folder of its own, the simulated network, the simulated host and
// the provider that it loads. Gone with the object.
#pragma once

#include "player/target.h"
#include "simulator/norda/host_records.h"
#include "simulator/norda/host_utils.h"
#include "simulator/norda/practice.h"
#include "simulator/norda/provider_client.h"
#include "simulator/siss/network.h"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vellumo::player
{

// A statement of the database that is to fail.
struct StatementFault
{
    std::string pattern;    // part of its text, in any case; "" is in every statement
    std::size_t number = 0; // which of those; 0: each
    std::string message;
    norda::ServerFault kind = norda::ServerFault::Plain;
    std::size_t met = 0;
    bool fired = false;
};

class Stage
{
public:
    // `model` is a practice as `Practice::Create` leaves it; a copy of it in `folder` is this stage's own. Without a
    // model it is the practice that an earlier stage left there. `server`: as for `norda::Practice`.
    Stage(const std::filesystem::path& model, const std::filesystem::path& folder, const std::string& server,
          screen::Operator& anOperator);
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    [[nodiscard]] norda::Practice& Practice() noexcept { return m_practice; }
    [[nodiscard]] siss::Network& Network() noexcept { return m_network; }
    [[nodiscard]] norda::HostObjects& Objects() noexcept { return m_objects; }
    [[nodiscard]] norda::PrescriptionObjects& Prescriptions() noexcept { return m_prescriptions; }
    [[nodiscard]] screen::Screen& Screen() noexcept { return *m_target.screen; }
    [[nodiscard]] norda::Installation& Machine() noexcept { return m_target.workstation->Machine(); }
    // A second connection, which sees what is stored and is never made to fail.
    [[nodiscard]] norda::Database& Database() noexcept { return *m_own; }

    // Empty: nobody. Takes effect at once.
    void LogOn(std::optional<std::int32_t> user);
    void SetStudio(std::int32_t studio);
    // "Connection", "LockSrv" or "Utils": the host does not hand it over (any more).
    void Withhold(const std::string& part);
    void AnswerZeroWithoutRow() { m_utils->AnswerZeroWithoutRow(); }
    // From now on the host behaves as real ones and their servers do wherever the library can notice.
    void BecomeStrict();
    [[nodiscard]] bool IsStrict() const noexcept { return m_hosts && m_hosts->Strictness() != nullptr; }
    // Those that a strict host's connection opened silently, for a result beside an open one.
    [[nodiscard]] std::size_t SecondConnections() const noexcept;
    // On Windows: its objects have other names than those that the library expects. The folder is for a copy of it.
    void Rename(const std::filesystem::path& folder) { m_renamedIn = folder; }
    // As a host does that finds a transaction open which the library could not end.
    void RollBack();
    void RemoveBridge() noexcept { m_bridgeInstalled = false; }
    // Returns the fault as it stands at any time.
    std::shared_ptr<const StatementFault> AddFault(StatementFault fault)
    {
        return m_faults.emplace_back(std::make_shared<StatementFault>(std::move(fault)));
    }
    // Those that have not come by now do not come any more.
    void FailNoMore() noexcept { m_faults.clear(); }
    // As the host would before it hands the certificate over. Faults when there is none.
    [[nodiscard]] std::shared_ptr<host::Record> LoadCertificate(std::int32_t id);
    // From now on each statement of the library takes that long, as on a busy server.
    void SetPace(std::chrono::milliseconds pace) noexcept { m_pace = pace; }
    // Hears of each statement of the library before it is run.
    void SetStatementSeen(std::function<void()> seen) { m_statementSeen = std::move(seen); }
    // Statements of the library so far.
    [[nodiscard]] const std::vector<std::string>& Statements() const noexcept { return m_statements; }
    // Those that contain the text, in any case.
    [[nodiscard]] std::size_t CountStatements(const std::string& part) const;

    // The provider; made by the first call of it, everything handed over. Faults as creating it does.
    [[nodiscard]] norda::ProviderClient& Provider();
    // Lets go of the provider; True when nothing of the library is left, or there was none.
    [[nodiscard]] bool ReleaseProvider();

    // What the host has, handed over (again).
    void HandOver();

private:
    void BeforeStatement(const std::string& sql);

    norda::Practice m_practice;
    siss::Network m_network;
    norda::HostObjects m_objects;
    norda::PrescriptionObjects m_prescriptions;
    Target m_target;
    std::shared_ptr<norda::Database> m_own;
    std::shared_ptr<norda::Database> m_hosts;
    std::shared_ptr<norda::HostUtils> m_utils;
    std::shared_ptr<norda::HostLockSrv> m_lockSrv;
    std::int32_t m_studio = norda::Practice::studio;
    std::filesystem::path m_renamedIn;
    bool m_bridgeInstalled = true;
    bool m_hostReads = false; // for itself
    std::vector<std::shared_ptr<StatementFault>> m_faults;
    std::vector<std::string> m_statements;
    std::chrono::milliseconds m_pace{0};
    std::function<void()> m_statementSeen;
    std::unique_ptr<norda::ProviderClient> m_provider;
};

} // namespace vellumo::player
