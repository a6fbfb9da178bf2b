// Plays the scenarios of files, each in a practice made new for it, and says what differed.
#pragma once

#include "player/run.h"
#include "player/scenario.h"

#include <filesystem>
#include <functional>
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
    // As it is made once, and its copy in which a scenario is played.
    [[nodiscard]] norda::Practice Model() const { return norda::Practice(m_folder / "model", m_options.database); }
    [[nodiscard]] norda::Practice ThePractice() const
    {
        return norda::Practice(m_folder / "practice", m_options.database);
    }
    [[nodiscard]] std::unique_ptr<Run> Once(std::size_t failingStatement = 0, std::size_t dyingStatement = 0);
    void RunScenario();
    // Again and again, as the scenario says, each time with a break.
    void Sweep(std::unique_ptr<Run> whole);
    // `play` makes a break at a statement of the library and returns what is stored then, empty when it did not come to
    // it; `judge` says what is wrong with that, by the number of the break.
    using Play = std::function<std::optional<norda::Snapshot>(std::size_t statement)>;
    using Judge = std::function<std::optional<std::string>(const norda::Snapshot& now, std::size_t number)>;
    void BreakAtEach(const std::string& how, const std::vector<std::size_t>& statements, const Play& play,
                     const Judge& judge);
    // The statement fails.
    [[nodiscard]] std::optional<norda::Snapshot> Fail(std::size_t statement);
    // The program ends before it, in a process of its own. Where it is started again it tells of the codes that it had.
    [[nodiscard]] std::optional<norda::Snapshot> End(std::size_t statement, bool startsAgain);
    void Differ(const std::string& what) { m_differences.push_back({m_scenario->place, what}); }
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
