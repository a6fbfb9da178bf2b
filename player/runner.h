// Plays the scenarios of files, each in a practice made new for it, and says what differed.
#pragma once

#include "player/run.h"
#include "player/scenario.h"

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace vellumo::player
{

class Runner
{
public:
    struct Options
    {
        bool tell = false;
        bool outcomes = false;             // says also of scenarios that hold that they do
        bool renamed = false;              // the host's objects have other names
        bool strict = false;               // every scenario's host is
        std::filesystem::path screenshots; // where to save them, of each of several scenarios in a folder; "" for none
        std::string database;              // connection string of a SQL Server; "" for SQLite
        std::filesystem::path keep;        // where to keep the practice's files; "" for not at all
        int apartLine = 0;                 // of the scenario that a process of its own plays, in the folder to keep
        std::size_t apartStatement = 0;    // where that process ends
    };
    Runner(Options options, std::ostream& out);
    ~Runner();
    Runner(const Runner&) = delete;
    Runner& operator=(const Runner&) = delete;

    // The number of scenarios that do not hold.
    std::size_t RunFile(const std::filesystem::path& file);
    void Summary(std::size_t failed);

private:
    void SetScreenshots(const std::string& folder);
    [[nodiscard]] std::unique_ptr<Run> Once(std::size_t failingStatement = 0, std::size_t dyingStatement = 0);
    void RunScenario();
    // Again with something that breaks at the first statement of the library, at the second, and so on until none is
    // left. `play` returns the database that the break has left, empty when there was none.
    void BreakAtEach(const std::string& how, const norda::Snapshot& before, const norda::Snapshot& after,
                     std::optional<norda::Snapshot> (Runner::*play)(std::size_t statement));
    [[nodiscard]] std::optional<norda::Snapshot> Fail(std::size_t statement);
    // The program ends before the statement, in a process of its own.
    [[nodiscard]] std::optional<norda::Snapshot> Die(std::size_t statement);
    // The exit code of the process that ended.
    [[nodiscard]] int EndAt(std::size_t statement);
    // The program ends after each reply of SISS, and is started again, which tells of the codes that it had.
    void EndAfterEachReply(const norda::Snapshot& before, const norda::Snapshot& after,
                           const std::vector<siss::Exchange>& exchanges,
                           const std::vector<std::size_t>& statementsAfterReplies);
    void Differ(const Place& place, const std::string& what) { m_differences.push_back({place, what}); }
    void SayDifferences(const std::string& title, const std::vector<Difference>& differences);

    Options m_options;
    std::ostream& m_out;
    std::filesystem::path m_folder; // gone at the end, unless it is the one to keep
    Narrator m_narrator;
    const Scenario* m_scenario = nullptr;  // being played
    std::vector<Difference> m_differences; // of it
    std::filesystem::path m_screenshots;   // of it
    std::size_t m_count = 0;
    // Of the lines that a file's scenarios have in common: in how many they had no effect, and why.
    std::map<int, std::pair<std::size_t, Difference>> m_idleCommon;
};

} // namespace vellumo::player
