// Plays the scenarios of files, each in a practice made new for it, and says what differed.
#pragma once

#include "player/run.h"
#include "player/scenario.h"

#include <filesystem>
#include <map>
#include <memory>
#include <ostream>
#include <vector>

namespace vellumo::player
{

// Gone with the object, unless it is a folder to keep.
class WorkFolder
{
public:
    explicit WorkFolder(const std::filesystem::path& keep);
    ~WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const noexcept { return m_path; }
    [[nodiscard]] std::filesystem::path Model() const { return m_path / "model"; }
    [[nodiscard]] std::filesystem::path Practice() const { return m_path / "practice"; }

private:
    std::filesystem::path m_path;
    bool m_kept;
};

class Runner
{
public:
    struct Options
    {
        bool tell = false;
        bool strict = false;               // every scenario's host is
        std::filesystem::path screenshots; // where to save them, of each of several scenarios in a folder; "" for none
        std::filesystem::path keep;        // where to keep the practice's files; "" for not at all
        int apartLine = 0;                 // of the scenario that a process of its own plays, in the folder to keep
        std::size_t apartStatement = 0;    // where that process ends
    };
    // What a run in which nothing was made to fail did to the database.
    struct Whole
    {
        Snapshot before;
        Snapshot after;
        std::vector<std::string> stored;
        std::vector<siss::Exchange> exchanges;
        std::vector<std::size_t> statementsAfterReplies;
    };
    Runner(Options options, std::ostream& out);

    // The number of scenarios that do not hold.
    std::size_t RunFile(const std::filesystem::path& file);
    void Summary(std::size_t failed);

private:
    void SetScreenshots(const std::string& folder);
    [[nodiscard]] std::unique_ptr<Run> Once(const Scenario& scenario, std::size_t failingStatement = 0,
                                            std::size_t dyingStatement = 0);
    std::vector<Difference> RunScenario(const Scenario& scenario);
    std::vector<Difference> Sweep(const Scenario& scenario, const Whole& whole);
    // The exit code of the process that ended.
    [[nodiscard]] int EndAt(const Scenario& scenario, std::size_t statement);
    void EndAfterEachReply(const Scenario& scenario, const Whole& whole, std::vector<Difference>& differences);
    void KillAtEachStatement(const Scenario& scenario, const Whole& whole, std::vector<Difference>& differences);
    void SayDifferences(const std::string& title, const std::vector<Difference>& differences);

    Options m_options;
    std::ostream& m_out;
    WorkFolder m_folder;
    Narrator m_narrator;
    std::filesystem::path m_screenshots; // of the scenario that is being played
    std::size_t m_count = 0;
    // Of the lines that a file's scenarios have in common: in how many they had no effect, and why.
    std::map<int, std::pair<std::size_t, Difference>> m_idleCommon;
};

} // namespace vellumo::player
