#include "player/runner.h"

#include "player/given_codes.h"
#include "player/whole_patients.h"
#include "player/written.h"

#include <algorithm>
#include <random>

namespace vellumo::player
{
namespace
{

namespace fs = std::filesystem;

constexpr const char* nothingFailed = "the library runs no statement here that could fail";

bool SweepsPatients(const Scenario& scenario)
{
    return scenario.Find("sweep")->Has("patients");
}

// What a call stores. The lines that it leaves in the host's journal when something fails are no part of that.
std::vector<std::string> StoredBy(Run& run)
{
    std::vector<std::string> stored;
    for (const auto& change : run.Changes())
    {
        if (!change.IsJournalLine())
        {
            stored.push_back(change.Text());
        }
    }
    return stored;
}

// What a run that something made to fail has left half done; empty when it is all or nothing, for the whole call or for
// each patient.
std::optional<std::string> HalfDone(const Scenario& scenario, const Runner::Whole& whole, Run& failed)
{
    if (SweepsPatients(scenario))
    {
        return FindBrokenPatient(whole.before, whole.after, failed.Now());
    }
    const auto stored = StoredBy(failed);
    return stored.empty() || stored == whole.stored ? std::nullopt
                                                    : std::optional("this is stored:\n    " + Joined(stored, "\n    "));
}

} // namespace

WorkFolder::WorkFolder(const fs::path& keep)
    : m_path(keep)
    , m_kept(!keep.empty())
{
    if (!m_kept)
    {
        m_path = fs::temp_directory_path() / ("vellumo-" + std::to_string(std::random_device()()));
    }
    fs::create_directories(m_path);
}

WorkFolder::~WorkFolder()
{
    std::error_code ignored;
    if (!m_kept)
    {
        fs::remove_all(m_path, ignored);
    }
}

Runner::Runner(Options options, std::ostream& out)
    : m_options(std::move(options))
    , m_out(out)
    , m_folder(m_options.keep)
    , m_narrator(m_out, m_options.tell)
{
    if (m_options.apartLine == 0)
    {
        norda::Practice(m_folder.Model()).Create();
    }
}

std::size_t Runner::RunFile(const fs::path& file)
{
    std::size_t played = 0;
    std::size_t failed = 0;
    m_idleCommon.clear();
    const auto scenarios = ReadScenarios(file);
    for (const auto& scenario : scenarios)
    {
        if (m_options.apartLine != 0)
        {
            if (scenario.place.line == m_options.apartLine)
            {
                static_cast<void>(Once(scenario, 0, m_options.apartStatement));
            }
            continue;
        }
        SetScreenshots(scenarios.size() > 1 ? FileName(scenario.title) : "");
        if (scenario.IsFor(VELLUMO_TARGET))
        {
            ++played;
            const auto differences = RunScenario(scenario);
            SayDifferences(scenario.title, differences);
            failed += differences.empty() ? 0U : 1U;
        }
    }
    m_count += played;
    // A line before the first scenario need not concern each of them.
    std::vector<Difference> idle;
    for (const auto& [line, counted] : m_idleCommon)
    {
        if (counted.first == played)
        {
            idle.push_back(counted.second);
        }
    }
    SayDifferences("what the scenarios of a file have in common", idle);
    return failed + (idle.empty() ? 0U : 1U);
}

void Runner::SetScreenshots(const std::string& folder)
{
    if (!m_options.screenshots.empty())
    {
        m_screenshots = m_options.screenshots / folder;
        fs::create_directories(m_screenshots);
    }
}

void Runner::Summary(std::size_t failed)
{
    m_narrator.Summary(m_count, failed);
    if (!m_options.tell)
    {
        m_out << m_count << " scenarios, " << failed << " failed\n";
    }
}

std::unique_ptr<Run> Runner::Once(const Scenario& scenario, std::size_t failingStatement, std::size_t dyingStatement)
{
    const bool compares = scenario.Find("database") != nullptr || scenario.Find("sweep") != nullptr;
    const bool whole = failingStatement == 0 && dyingStatement == 0;
    const Run::Options options{m_screenshots, m_options.strict, compares, failingStatement, dyingStatement};
    auto run = std::make_unique<Run>(m_folder.Model(), m_folder.Practice(), options, m_narrator);
    for (const auto& node : scenario.nodes)
    {
        if (whole || node.group->role != Role::Check)
        {
            run->Play(node);
        }
    }
    run->Finish(scenario.place);
    return run;
}

std::vector<Difference> Runner::RunScenario(const Scenario& scenario)
{
    m_narrator.Begin(scenario.title);
    auto run = Once(scenario);
    auto differences = run->Differences();
    for (const auto& idle : run->WithoutEffect())
    {
        const Difference difference{idle.place, "this line has no effect: " + idle.what};
        if (idle.place.line < scenario.place.line)
        {
            ++m_idleCommon.try_emplace(idle.place.line, 0, difference).first->second.first;
        }
        else
        {
            differences.push_back(difference);
        }
    }
    if (!differences.empty() || scenario.Find("sweep") == nullptr)
    {
        return differences;
    }
    const Whole whole{run->Before(), run->Now(), StoredBy(*run), run->GetStage().Network().Exchanges(),
                      run->StatementsAfterReplies()};
    run.reset();
    if (scenario.Find("sweep")->Has("programs"))
    {
        EndAfterEachReply(scenario, whole, differences);
        return differences;
    }
    return Sweep(scenario, whole);
}

// Again with the first statement of the library failing, with the second, and so on until none is left to fail.
std::vector<Difference> Runner::Sweep(const Scenario& scenario, const Whole& whole)
{
    std::vector<Difference> differences;
    for (std::size_t failing = 1;; ++failing)
    {
        const auto run = Once(scenario, failing);
        if (!run->HasFailed())
        {
            if (failing == 1)
            {
                differences.push_back({scenario.place, nothingFailed});
            }
            break;
        }
        const auto when = "with statement " + std::to_string(failing) + " of the library failing, ";
        if (const auto halfDone = HalfDone(scenario, whole, *run))
        {
            differences.push_back({scenario.place, when + *halfDone});
        }
        if (!SweepsPatients(scenario)) // where an import ends early, the windows of its end do not come
        {
            for (const auto& difference : run->Differences())
            {
                differences.push_back({difference.place, when + difference.what});
            }
        }
    }
    constexpr bool isCheap = std::string_view(VELLUMO_TARGET) == "native"; // to make a process
    if (isCheap && SweepsPatients(scenario))
    {
        KillAtEachStatement(scenario, whole, differences);
    }
    return differences;
}

int Runner::EndAt(const Scenario& scenario, std::size_t statement)
{
    const std::vector<std::string> words = {"--keep",
                                            m_folder.Path().string(),
                                            "--apart",
                                            std::to_string(scenario.place.line),
                                            std::to_string(statement),
                                            scenario.place.file};
    return DoApart(words, [&] { static_cast<void>(Once(scenario, 0, statement)); });
}

// The program ends after each reply of SISS, and is started again, which tells of the codes that it had.
void Runner::EndAfterEachReply(const Scenario& scenario, const Whole& whole, std::vector<Difference>& differences)
{
    if (whole.statementsAfterReplies.size() != whole.exchanges.size())
    {
        differences.push_back({scenario.place, "there is no statement of the library after the last reply"});
        return;
    }
    for (std::size_t replies = 1; replies <= whole.exchanges.size(); ++replies)
    {
        const auto when = "ended after reply " + std::to_string(replies) + ", ";
        if (EndAt(scenario, whole.statementsAfterReplies[replies - 1]) != Run::died)
        {
            differences.push_back({scenario.place, when + "the process did not come to it"});
            return;
        }
        Run again({}, m_folder.Practice(), {.screenshots = {}, .snapshots = true}, m_narrator);
        static_cast<void>(again.GetStage().Provider().IsPersonaleStudio());
        const Snapshot now = again.Now();
        if (const auto lost = FindLostCode(whole.exchanges, replies, {whole.before, whole.after, now}))
        {
            differences.push_back({scenario.place, when + *lost});
        }
    }
}

void Runner::KillAtEachStatement(const Scenario& scenario, const Whole& whole, std::vector<Difference>& differences)
{
    for (std::size_t dying = 1;; ++dying)
    {
        const int code = EndAt(scenario, dying);
        if (code == 0)
        {
            if (dying == 1)
            {
                differences.push_back({scenario.place, nothingFailed});
            }
            return;
        }
        if (code != Run::died)
        {
            differences.push_back({scenario.place, "the process did not come to statement " + std::to_string(dying)});
            return;
        }
        const auto database = norda::Practice(m_folder.Practice()).Open();
        if (const auto broken = FindBrokenPatient(whole.before, whole.after, TakeSnapshot(*database)))
        {
            differences.push_back({scenario.place, "ended at statement " + std::to_string(dying) + ", " + *broken});
        }
    }
}

void Runner::SayDifferences(const std::string& title, const std::vector<Difference>& differences)
{
    if (!differences.empty())
    {
        m_out << "FAILED: " << title << '\n';
    }
    for (const auto& difference : differences)
    {
        m_out << difference.place.Text() << ": " << difference.what << '\n';
    }
    m_out << std::flush;
}

} // namespace vellumo::player
