#include "player/runner.h"

#include "host/fault.h"
#include "player/apart.h"
#include "player/given_codes.h"
#include "player/written.h"
#include "simulator/norda/whole_patients.h"

#include <algorithm>
#include <random>

namespace vellumo::player
{
namespace
{

namespace fs = std::filesystem;

bool SweepsPatients(const Scenario& scenario)
{
    return scenario.Find("sweep")->Has("patients");
}

// What is stored between two moments. The lines that something that fails leaves in the host's journal are no part of
// that.
std::vector<std::string> StoredBetween(const norda::Snapshot& before, const norda::Snapshot& after)
{
    std::vector<std::string> stored;
    for (const auto& change : Compare(before, after))
    {
        if (!change.IsJournalLine())
        {
            stored.push_back(change.Text());
        }
    }
    return stored;
}

} // namespace

Runner::Runner(Options options, std::ostream& out)
    : m_options(std::move(options))
    , m_out(out)
    , m_folder(!m_options.keep.empty()
                   ? m_options.keep
                   : fs::temp_directory_path() / ("vellumo-" + std::to_string(std::random_device()())))
    , m_narrator(m_out, m_options.tell)
{
    fs::create_directories(m_folder);
    if (m_options.apartLine == 0)
    {
        norda::Practice(m_folder / "model", m_options.database).Create();
    }
}

Runner::~Runner()
{
    std::error_code ignored;
    if (m_options.keep.empty())
    {
        host::PassOver([this] { norda::Practice(m_folder / "model", m_options.database).RemoveServer(); });
        fs::remove_all(m_folder, ignored);
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
        m_scenario = &scenario;
        if (m_options.apartLine != 0)
        {
            if (scenario.place.line == m_options.apartLine)
            {
                static_cast<void>(Once(0, m_options.apartStatement));
            }
            continue;
        }
        SetScreenshots(scenarios.size() > 1 ? FileName(scenario.title) : "");
        if (scenario.IsFor(VELLUMO_TARGET))
        {
            ++played;
            RunScenario();
            SayDifferences(scenario.title, m_differences);
            if (m_options.outcomes && m_differences.empty())
            {
                m_out << "HELD: " << scenario.title << std::endl; // at once: the next one may not come to its end
            }
            failed += m_differences.empty() ? 0U : 1U;
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

std::unique_ptr<Run> Runner::Once(std::size_t failingStatement, std::size_t dyingStatement)
{
    const bool compares = m_scenario->Find("database") != nullptr || m_scenario->Find("sweep") != nullptr;
    const bool whole = failingStatement == 0 && dyingStatement == 0;
    const Run::Options options{.screenshots = m_screenshots,
                               .renamed = m_options.renamed ? m_folder / "renamed" : fs::path(),
                               .server = m_options.database,
                               .strict = m_options.strict,
                               .snapshots = compares,
                               .failingStatement = failingStatement,
                               .dyingStatement = dyingStatement};
    auto run = std::make_unique<Run>(m_folder / "model", m_folder / "practice", options, m_narrator);
    for (const auto& node : m_scenario->nodes)
    {
        if (whole || node.group->role != Role::Check)
        {
            run->Play(node);
        }
    }
    run->Finish(m_scenario->place);
    return run;
}

void Runner::RunScenario()
{
    m_narrator.Begin(m_scenario->title);
    auto run = Once();
    m_differences = run->Differences();
    for (const auto& [place, why] : run->WithoutEffect())
    {
        const Difference difference{place, "this line has no effect: " + why};
        if (place.line < m_scenario->place.line)
        {
            ++m_idleCommon.try_emplace(place.line, 0, difference).first->second.first;
        }
        else
        {
            m_differences.push_back(difference);
        }
    }
    if (!m_differences.empty() || m_scenario->Find("sweep") == nullptr)
    {
        return;
    }
    const auto before = run->Before();
    const auto after = run->Now();
    const auto exchanges = run->GetStage().Network().Exchanges();
    const auto statementsAfterReplies = run->StatementsAfterReplies();
    run.reset();
    if (m_scenario->Find("sweep")->Has("programs"))
    {
        EndAfterEachReply(before, after, exchanges, statementsAfterReplies);
        return;
    }
    BreakAtEach("with a fault of statement ", before, after, &Runner::Fail);
    constexpr bool isCheap = std::string_view(VELLUMO_TARGET) == "native"; // to make a process
    if (isCheap && SweepsPatients(*m_scenario))
    {
        BreakAtEach("ended before statement ", before, after, &Runner::Die);
    }
}

void Runner::BreakAtEach(const std::string& how, const norda::Snapshot& before, const norda::Snapshot& after,
                         std::optional<norda::Snapshot> (Runner::*play)(std::size_t statement))
{
    const auto whole = StoredBetween(before, after);
    std::size_t statement = 1;
    for (auto now = (this->*play)(statement); now; now = (this->*play)(++statement))
    {
        const auto when = how + std::to_string(statement) + ", ";
        if (SweepsPatients(*m_scenario))
        {
            if (const auto broken = norda::FindBrokenPatient(before, after, *now))
            {
                Differ(m_scenario->place, when + *broken);
            }
        }
        else if (const auto stored = StoredBetween(before, *now); !stored.empty() && stored != whole)
        {
            Differ(m_scenario->place, when + "this is stored:\n    " + Joined(stored, "\n    "));
        }
    }
}

std::optional<norda::Snapshot> Runner::Fail(std::size_t statement)
{
    const auto run = Once(statement);
    if (!run->HasFailed())
    {
        if (statement == 1)
        {
            Differ(m_scenario->place, "the library runs no statement here that could fail");
        }
        return std::nullopt;
    }
    if (!SweepsPatients(*m_scenario)) // where an import ends early, the windows of its end do not come
    {
        for (const auto& [place, what] : run->Differences())
        {
            Differ(place, "with a fault of statement " + std::to_string(statement) + ", " + what);
        }
    }
    return run->Now();
}

std::optional<norda::Snapshot> Runner::Die(std::size_t statement)
{
    const int code = EndAt(statement);
    if (code == Run::died)
    {
        return norda::TakeSnapshot(*norda::Practice(m_folder / "practice", m_options.database).Open());
    }
    if (code != 0)
    {
        Differ(m_scenario->place, "the process did not come to statement " + std::to_string(statement));
    }
    return std::nullopt;
}

int Runner::EndAt(std::size_t statement)
{
    const std::vector<std::string> words = {"--keep",
                                            m_folder.string(),
                                            "--database",
                                            m_options.database,
                                            "--apart",
                                            std::to_string(m_scenario->place.line),
                                            std::to_string(statement),
                                            m_scenario->place.file};
    return DoApart(words, [&] { static_cast<void>(Once(0, statement)); });
}

void Runner::EndAfterEachReply(const norda::Snapshot& before, const norda::Snapshot& after,
                               const std::vector<siss::Exchange>& exchanges,
                               const std::vector<std::size_t>& statementsAfterReplies)
{
    if (statementsAfterReplies.size() != exchanges.size())
    {
        Differ(m_scenario->place, "there is no statement of the library after the last reply");
        return;
    }
    if (!GivesCodes(exchanges))
    {
        Differ(m_scenario->place, "SISS gives no code in this scenario");
    }
    for (std::size_t replies = 1; replies <= exchanges.size(); ++replies)
    {
        const auto when = "ended after reply " + std::to_string(replies) + ", ";
        if (EndAt(statementsAfterReplies[replies - 1]) != Run::died)
        {
            Differ(m_scenario->place, when + "the process did not come to it");
            return;
        }
        Run again({}, m_folder / "practice", {.screenshots = {}, .server = m_options.database, .snapshots = true},
                  m_narrator);
        static_cast<void>(again.GetStage().Host().Provider().IsPersonaleStudio());
        if (const auto lost = FindLostCode(exchanges, replies, {before, after, again.Now()}))
        {
            Differ(m_scenario->place, when + *lost);
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
