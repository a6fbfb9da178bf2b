// scenario [--tell] [--screenshots DIR] [--keep DIR] FILE…
//
// Runs the scenarios of the files, each in a practice made new for it, and says what differed. Exit code 0 when all
// hold, 1 when one does not, 2 when a file cannot be read.
#include "host/fault.h"
#include "player/parser.h"
#include "player/whole_patients.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <optional>
#include <random>

namespace
{

using namespace vellumo;
using namespace vellumo::player;
namespace fs = std::filesystem;

struct Arguments
{
    bool tell = false;
    fs::path screenshots;
    fs::path keep;
    std::vector<fs::path> files;
};

std::optional<Arguments> ReadArguments(const std::vector<std::string>& words)
{
    Arguments arguments;
    for (std::size_t i = 0; i < words.size(); ++i)
    {
        const bool more = i + 1 < words.size();
        if (words[i] == "--tell")
        {
            arguments.tell = true;
        }
        else if (words[i] == "--screenshots" && more)
        {
            arguments.screenshots = fs::u8path(words[++i]);
        }
        else if (words[i] == "--keep" && more)
        {
            arguments.keep = fs::u8path(words[++i]);
        }
        else if (words[i].substr(0, 2) == "--")
        {
            return std::nullopt;
        }
        else
        {
            arguments.files.push_back(fs::u8path(words[i]));
        }
    }
    return arguments.files.empty() ? std::nullopt : std::optional(arguments);
}

// Gone with the object, unless it is the folder to keep.
class WorkFolder
{
public:
    explicit WorkFolder(const fs::path& keep)
        : m_path(keep)
        , m_kept(!keep.empty())
    {
        if (!m_kept)
        {
            m_path = fs::temp_directory_path() / ("vellumo-" + std::to_string(std::random_device()()));
        }
        fs::create_directories(m_path);
    }
    ~WorkFolder()
    {
        std::error_code ignored;
        if (!m_kept)
        {
            fs::remove_all(m_path, ignored);
        }
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    [[nodiscard]] const fs::path& Path() const noexcept { return m_path; }

private:
    fs::path m_path;
    bool m_kept;
};

class Runner
{
public:
    explicit Runner(Arguments arguments)
        : m_arguments(std::move(arguments))
        , m_folder(m_arguments.keep)
    {
        norda::Practice(Model()).Create();
        if (m_arguments.tell)
        {
            m_narrator.emplace(std::cout);
        }
        if (!m_arguments.screenshots.empty())
        {
            fs::create_directories(m_arguments.screenshots);
        }
    }

    // The number of scenarios that do not hold.
    std::size_t RunFile(const fs::path& file)
    {
        std::size_t failed = 0;
        for (const auto& scenario : ReadScenarios(file))
        {
            const auto& targets = scenario.targets;
            if (!targets.empty() && std::find(targets.begin(), targets.end(), VELLUMO_TARGET) == targets.end())
            {
                continue;
            }
            ++m_count;
            const auto differences = scenario.sweep == Sweep::WholeCall       ? SweepCall(scenario)
                                     : scenario.sweep == Sweep::WholePatients ? SweepPatients(scenario)
                                                                              : Once(scenario);
            Tell(scenario, differences);
            failed += differences.empty() ? 0U : 1U;
        }
        return failed;
    }

    void Summary(std::size_t failed)
    {
        if (m_narrator)
        {
            m_narrator->Summary(m_count, failed);
        }
        else
        {
            std::cout << m_count << " scenarios, " << failed << " failed\n";
        }
    }

private:
    [[nodiscard]] fs::path Model() const { return m_folder.Path() / "model"; }
    [[nodiscard]] fs::path PracticeFolder() const { return m_folder.Path() / "practice"; }

    Run MakeRun(const Scenario& scenario, std::size_t failingStatement, std::size_t dyingStatement = 0)
    {
        Run::Options options;
        options.screenshots = m_arguments.screenshots;
        options.snapshots = scenario.comparesDatabase;
        options.failingStatement = failingStatement;
        options.dyingStatement = dyingStatement;
        return {Model(), PracticeFolder(), options, m_narrator ? &*m_narrator : nullptr};
    }

    static void Play(const Scenario& scenario, Run& run, bool withChecks)
    {
        for (const auto& step : scenario.steps)
        {
            if (step.isCheck && !withChecks)
            {
                continue;
            }
            try
            {
                step.perform(run);
            }
            catch (const std::exception& fault)
            {
                run.Report(step.place, std::string("this could not be done: ") + fault.what());
            }
        }
        run.Finish(scenario.place);
    }

    std::vector<Difference> Once(const Scenario& scenario)
    {
        if (m_narrator)
        {
            m_narrator->Begin(scenario.title);
        }
        auto run = MakeRun(scenario, 0);
        Play(scenario, run, true);
        return run.Differences();
    }

    std::vector<Difference> SweepCall(const Scenario& scenario);
    std::vector<Difference> SweepPatients(const Scenario& scenario);
    void KillAtEachStatement(const Scenario& scenario, const Snapshot& before, const Snapshot& after,
                             std::vector<Difference>& differences);

    static void Tell(const Scenario& scenario, const std::vector<Difference>& differences)
    {
        if (differences.empty())
        {
            return;
        }
        std::cout << "FAILED: " << scenario.title << '\n';
        for (const auto& difference : differences)
        {
            std::cout << difference.place.Text() << ": " << difference.what << '\n';
        }
        std::cout << std::flush;
    }

    Arguments m_arguments;
    WorkFolder m_folder;
    std::optional<Narrator> m_narrator;
    std::size_t m_count = 0;
};

bool SameChanges(const std::vector<RowChange>& left, const std::vector<RowChange>& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const RowChange& a, const RowChange& b) { return a.Text() == b.Text(); });
}

// What a call stores. The lines that it leaves in the host's journal when something fails are no part of that.
std::vector<RowChange> StoredBy(Run& run)
{
    auto changes = run.Changes();
    std::erase_if(changes, [](const RowChange& change) { return change.table == "GiornaleServizi"; });
    return changes;
}

constexpr const char* nothingFailed = "the library runs no statement here that could fail";

// First as written. Then again with the first statement of the library failing, with the second, and so on until none
// is left to fail: each time the database must hold all that the first run stored, or nothing of it.
std::vector<Difference> Runner::SweepCall(const Scenario& scenario)
{
    auto whole = MakeRun(scenario, 0);
    Play(scenario, whole, true);
    auto differences = whole.Differences();
    const auto stored = StoredBy(whole);
    if (!differences.empty())
    {
        return differences;
    }
    for (std::size_t failing = 1;; ++failing)
    {
        auto run = MakeRun(scenario, failing);
        Play(scenario, run, false);
        if (!run.HasFailed())
        {
            if (failing == 1)
            {
                differences.push_back({scenario.place, nothingFailed});
            }
            return differences;
        }
        const auto changes = StoredBy(run);
        if (!changes.empty() && !SameChanges(changes, stored))
        {
            std::string text = "with statement " + std::to_string(failing) + " of the library failing, this is stored:";
            for (const auto& change : changes)
            {
                text += "\n    " + change.Text();
            }
            differences.push_back({scenario.place, text});
        }
        for (const auto& difference : run.Differences())
        {
            differences.push_back({difference.place, "with statement " + std::to_string(failing) +
                                                         " of the library failing: " + difference.what});
        }
    }
}

// As above, but each patient for himself: those before the fault are kept.
std::vector<Difference> Runner::SweepPatients(const Scenario& scenario)
{
    Snapshot before;
    Snapshot after;
    {
        auto whole = MakeRun(scenario, 0);
        Play(scenario, whole, true);
        if (!whole.Differences().empty())
        {
            return whole.Differences();
        }
        before = whole.Before();
        after = whole.Now();
    }
    std::vector<Difference> differences;
    for (std::size_t failing = 1;; ++failing)
    {
        auto run = MakeRun(scenario, failing);
        Play(scenario, run, false);
        if (!run.HasFailed())
        {
            if (failing == 1)
            {
                differences.push_back({scenario.place, nothingFailed});
            }
            break;
        }
        if (const auto broken = FindBrokenPatient(before, after, run.Now()))
        {
            differences.push_back(
                {scenario.place, "with statement " + std::to_string(failing) + " failing, " + *broken});
        }
    }
    KillAtEachStatement(scenario, before, after, differences);
    return differences;
}

void Runner::KillAtEachStatement(const Scenario& scenario, const Snapshot& before, const Snapshot& after,
                                 std::vector<Difference>& differences)
{
    for (std::size_t dying = 1;; ++dying)
    {
        const auto code = DoApart(
            [&]
            {
                auto run = MakeRun(scenario, 0, dying);
                Play(scenario, run, false);
            });
        if (!code || *code == 0)
        {
            if (code && dying == 1)
            {
                differences.push_back({scenario.place, nothingFailed});
            }
            return;
        }
        if (*code != Run::died)
        {
            differences.push_back({scenario.place, "the process did not come to statement " + std::to_string(dying)});
            return;
        }
        if (const auto broken =
                FindBrokenPatient(before, after, TakeSnapshot(*norda::Practice(PracticeFolder()).Open())))
        {
            differences.push_back({scenario.place, "ended at statement " + std::to_string(dying) + ", " + *broken});
        }
    }
}

} // namespace

int main(int count, char** words)
{
    const auto arguments = ReadArguments({words + 1, words + count});
    if (!arguments)
    {
        std::cerr << "usage: scenario [--tell] [--screenshots DIR] [--keep DIR] FILE...\n"
                     "docs/scenarios.md tells how a scenario is written.\n";
        return 2;
    }
    try
    {
        Runner runner(*arguments);
        std::size_t failed = 0;
        for (const auto& file : arguments->files)
        {
            failed += runner.RunFile(file);
        }
        runner.Summary(failed);
        return failed == 0 ? 0 : 1;
    }
    catch (const std::exception& fault)
    {
        std::cerr << fault.what() << '\n';
        return 2;
    }
}
