#include "player/runner.h"

#include "host/fault.h"
#include "player/apart.h"
#include "player/given_codes.h"
#include "player/written.h"
#include "simulator/norda/whole_patients.h"

#include <numeric>
#include <random>

namespace vellumo::player
{
namespace
{

namespace fs = std::filesystem;

// What is stored between two moments, a row a line. The lines that something that fails leaves in the host's journal
// are no part of that.
std::string StoredBetween(const norda::Snapshot& before, const norda::Snapshot& after)
{
    std::string stored;
    for (const auto& change : norda::Compare(before, after))
    {
        stored += change.IsJournalLine() ? "" : "\n    " + change.Text();
    }
    return stored;
}

// Nothing or all is to be stored.
std::optional<std::string> FindHalfStored(const norda::Snapshot& before, const norda::Snapshot& after,
                                          const norda::Snapshot& now)
{
    const auto stored = StoredBetween(before, now);
    const bool isWhole = stored.empty() || stored == StoredBetween(before, after);
    return isWhole ? std::nullopt : std::optional("this is stored:" + stored);
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
        Model().Create();
    }
}

Runner::~Runner()
{
    std::error_code ignored;
    if (m_options.keep.empty())
    {
        host::PassOver([this] { Model().RemoveServer(); });
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
        m_screenshots = scenarios.size() == 1 || m_options.screenshots.empty()
                            ? m_options.screenshots
                            : m_options.screenshots / FileName(scenario.title);
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
                               .strict = m_options.strict,
                               .snapshots = compares && whole, // taking them is half of what a sweep does
                               .failingStatement = failingStatement,
                               .dyingStatement = dyingStatement};
    ThePractice().CopyFrom(Model().Folder());
    auto run = std::make_unique<Run>(ThePractice(), options, m_narrator);
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
    if (m_differences.empty() && m_scenario->Find("sweep") != nullptr)
    {
        Sweep(std::move(run));
    }
}

void Runner::Sweep(std::unique_ptr<Run> whole)
{
    const auto& sweep = *m_scenario->Find("sweep");
    const auto before = whole->Before();
    const auto after = whole->Now();
    const auto exchanges = whole->GetStage().Network().Exchanges();
    const auto afterReplies = whole->StatementsAfterReplies();
    std::vector<std::size_t> all(whole->GetStage().Host().Statements().size());
    std::iota(all.begin(), all.end(), 1);
    whole.reset();
    if (!sweep.Has("programs"))
    {
        const auto judge = [&](const norda::Snapshot& now, std::size_t) {
            return sweep.Has("patients") ? norda::FindBrokenPatient(before, after, now)
                                         : FindHalfStored(before, after, now);
        };
        BreakAtEach(
            "with a fault of statement ", all, [this](std::size_t each) { return Fail(each); }, judge);
        constexpr bool isCheap = std::string_view(VELLUMO_TARGET) == "native"; // to make a process
        if (isCheap && sweep.Has("patients"))
        {
            BreakAtEach(
                "ended before statement ", all, [this](std::size_t each) { return End(each, false); }, judge);
        }
    }
    else if (afterReplies.size() != exchanges.size())
    {
        Differ("there is no statement of the library after the last reply");
    }
    else if (!GivesCodes(exchanges))
    {
        Differ("SISS gives no code in this scenario");
    }
    else
    {
        BreakAtEach(
            "ended after reply ", afterReplies, [this](std::size_t each) { return End(each, true); },
            [&](const norda::Snapshot& now, std::size_t replies) {
                return FindLostCode(exchanges, replies, {before, after, now});
            });
    }
}

void Runner::BreakAtEach(const std::string& how, const std::vector<std::size_t>& statements, const Play& play,
                         const Judge& judge)
{
    if (statements.empty())
    {
        Differ("the library runs no statement here that could fail");
    }
    for (std::size_t number = 1; number <= statements.size(); ++number)
    {
        const auto when = how + std::to_string(number) + ", ";
        const auto now = play(statements[number - 1]);
        if (!now)
        {
            Differ(when + "the scenario did not come to it");
            return;
        }
        if (const auto wrong = judge(*now, number))
        {
            Differ(when + *wrong);
        }
    }
}

std::optional<norda::Snapshot> Runner::Fail(std::size_t statement)
{
    const auto run = Once(statement);
    for (const auto& [place, what] : run->Differences())
    {
        // Where an import ends early, the windows of its end do not come.
        if (!m_scenario->Find("sweep")->Has("patients"))
        {
            m_differences.push_back({place, "with a fault of statement " + std::to_string(statement) + ", " + what});
        }
    }
    return run->HasFailed() ? std::optional(run->Now()) : std::nullopt;
}

std::optional<norda::Snapshot> Runner::End(std::size_t statement, bool startsAgain)
{
    const std::vector<std::string> words = {"--keep",
                                            m_folder.string(),
                                            "--database",
                                            m_options.database,
                                            "--apart",
                                            std::to_string(m_scenario->place.line),
                                            std::to_string(statement),
                                            m_scenario->place.file};
    if (DoApart(words, [&] { static_cast<void>(Once(0, statement)); }) != Run::died)
    {
        return std::nullopt;
    }
    Run left(ThePractice(), {}, m_narrator);
    if (startsAgain)
    {
        static_cast<void>(left.GetStage().Host().Provider().IsPersonaleStudio());
    }
    return left.Now();
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
