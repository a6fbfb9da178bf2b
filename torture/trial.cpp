#include "torture/trial.h"

#include "player/given_codes.h"
#include "player/written.h"
#include "simulator/norda/whole_patients.h"
#include "torture/answers.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <utility>

namespace vellumo::torture
{
namespace
{

namespace fs = std::filesystem;

void PlayLines(player::Run& run, const player::Scenario& scenario, bool withChecks)
{
    for (const auto& node : scenario.nodes)
    {
        if (withChecks || node.group->role != player::Role::Check)
        {
            run.Play(node);
        }
    }
}

std::string TextOfFolder(const fs::path& folder)
{
    std::ostringstream text;
    std::error_code none;
    for (const auto& file : fs::directory_iterator(folder, none))
    {
        text << std::ifstream(file.path(), std::ios::binary).rdbuf();
    }
    return text.str();
}

// The patient that the call names, as the answer would be; "" for none.
std::string GivenPatient(player::Run& run, const player::Node& operation)
{
    if (operation.parts.empty())
    {
        return "";
    }
    const auto& argument = operation.parts.front();
    return argument.Keyword() == "patient" ? std::to_string(run.PatientId(argument.Text("CF"))) : argument.Text("N");
}

bool SaysCodesAreNotSafe(const norda::Snapshot& now)
{
    return std::any_of(now.begin(), now.end(),
                       [](const auto& row)
                       {
                           return row.first.table == norda::journalTable &&
                                  row.second.at("Riga").find("non sono al sicuro") != std::string::npos;
                       });
}

// Its rows are written in more than one step.
constexpr std::string_view prescriptionTable = "RicettaSSN";

norda::Snapshot Prescriptions(const norda::Snapshot& all, bool only)
{
    norda::Snapshot some;
    std::copy_if(all.begin(), all.end(), std::inserter(some, some.end()),
                 [&](const auto& each) { return (each.first.table == prescriptionTable) == only; });
    return some;
}

// A text that none of the two has there.
std::optional<std::string> FindStrangeText(const norda::Snapshot& before, const norda::Snapshot& after,
                                           const norda::Snapshot& now)
{
    for (const auto& change : norda::Compare(after, now))
    {
        for (const auto& [column, text] : change.texts)
        {
            const auto old = before.find(change.row);
            if (old == before.end() || old->second.at(column) != text)
            {
                return host::Joined({"prescription", std::to_string(change.row.key), "has", column, "=", text}, " ");
            }
        }
    }
    return std::nullopt;
}

std::string WhatIsMissing(const Stored& stored)
{
    std::string texts;
    for (const auto& change : norda::Compare(stored.now, stored.after))
    {
        texts += change.IsJournalLine() ? "" : "\n    " + change.Text();
    }
    return texts;
}

void AddRow(const norda::Snapshot& all, const norda::RowId& row, norda::Snapshot& some)
{
    if (const auto found = all.find(row); found != all.end())
    {
        some.insert(*found);
    }
}

} // namespace

Trial::Trial(const player::Scenario& scenario, const std::vector<player::Scenario>& next, const fs::path& model,
             fs::path folder, bool tells)
    : m_scenario(scenario)
    , m_next(next)
    , m_model(model)
    , m_folder(std::move(folder))
    , m_narrator(std::cout, tells)
    , m_silence(std::cout, false)
{
}

std::unique_ptr<player::Run> Trial::MakeRun(const fs::path& folder, bool lenient)
{
    const norda::Practice practice(folder);
    practice.CopyFrom(m_model);
    return std::make_unique<player::Run>(
        practice, player::Run::Options{.screenshots = {}, .snapshots = !lenient, .lenient = lenient},
        lenient ? m_narrator : m_silence);
}

const Unhindered& Trial::PlayUnhindered()
{
    // What is made once, when it is first needed, is not left behind by the call that needed it.
    for (std::size_t time = 0; time < std::max<std::size_t>(m_next.size(), 2) && m_unhindered.differences.empty();
         ++time)
    {
        LookAtUnhindered(time);
        m_unhindered.blocks = Seen().blocks;
    }
    return m_unhindered;
}

void Trial::LookAtUnhindered(std::size_t time)
{
    m_unhindered = {};
    Begin({});
    const auto run = MakeRun(m_folder, false);
    PlayLines(*run, m_scenario, true);
    Cease();
    m_unhindered.calls = Seen().calls;
    m_unhindered.before = run->Before();
    m_unhindered.after = run->Now();
    for (const auto& change : norda::Compare(m_unhindered.before, m_unhindered.after))
    {
        m_unhindered.changed.insert(change.row);
    }
    m_unhindered.outcomes = run->Outcomes();
    m_unhindered.canaries.Take(m_unhindered.before, run->GetStage().Network());
    m_unhindered.canaries.Take(m_unhindered.after, run->GetStage().Network());
    m_unhindered.exchanges = run->GetStage().Network().Exchanges().size();
    m_unhindered.differences = m_unhindered.canaries.FindAstray(*run, m_unhindered.after);
    for (auto& inReport : m_unhindered.canaries.FindInReport(run->GetStage().Practice()))
    {
        m_unhindered.differences.push_back(std::move(inReport));
    }
    for (const auto& [place, what] : run->Differences())
    {
        m_unhindered.differences.push_back(place.Text() + ": " + what);
    }
    PlayNext(*run, time, m_unhindered.differences);
}

// Again when something is left behind that only this failure needs, and that is made once, and when the call did not
// come, as the system pleased.
Verdict Trial::Play(const Failure& failure)
{
    auto verdict = PlayOnce(failure);
    if (verdict.seen.blocks > m_unhindered.blocks || !verdict.seen.failed)
    {
        verdict = PlayOnce(failure);
    }
    const auto& seen = verdict.seen;
    if (seen.blocks > m_unhindered.blocks)
    {
        verdict.findings.push_back(std::to_string(seen.blocks - m_unhindered.blocks) +
                                   " blocks of memory are left behind");
    }
    if (seen.objects != 0)
    {
        verdict.findings.push_back(std::to_string(seen.objects) + " objects of the host are still held");
    }
    return verdict;
}

Verdict Trial::PlayOnce(const Failure& failure)
{
    Verdict verdict;
    auto& findings = verdict.findings;
    Begin(failure);
    auto run = MakeRun(m_folder, true);
    PlayLines(*run, m_scenario, false);
    Cease();
    if (Seen().transactions != 0)
    {
        if (!Seen().refusedRollback)
        {
            findings.emplace_back("a transaction is open");
        }
        run->GetStage().Host().RollBack();
        Seen().transactions = 0;
    }
    const auto now = run->Now();
    const auto stored = LookAtStored(now);
    for (auto& astray : m_unhindered.canaries.FindAstray(*run, now))
    {
        findings.push_back(std::move(astray));
    }
    JudgeAnswers(*run, stored, findings);
    JudgeStored(*run, failure, stored, findings);
    PlayNext(*run, failure.number, findings);
    run.reset();
    verdict.seen = Seen();
    return verdict;
}

void Trial::JudgeAnswers(player::Run& run, const Stored& stored, std::vector<std::string>& findings) const
{
    const auto& outcomes = run.Outcomes();
    std::size_t next = 0;
    for (const auto& node : m_scenario.nodes)
    {
        if (node.Keyword() != "call" || next == outcomes.size())
        {
            continue;
        }
        const auto& operation = node.parts.front();
        const auto& expected = m_unhindered.outcomes.at(next);
        const auto& seen = outcomes[next++];
        const auto name = std::string(operation.Keyword());
        if (seen.fault)
        {
            if (seen.fault->empty() || (!Seen().isWithoutProvider && !LetsFaultsThrough(name)))
            {
                findings.push_back(name + " lets a fault reach the host: \"" + *seen.fault + '"');
            }
            continue;
        }
        if (const auto wrong = FindWrongAnswer(name, GivenPatient(run, operation), expected.returned, seen.returned))
        {
            findings.push_back(name + ' ' + *wrong);
        }
        if (const auto missing = WhatIsMissing(stored); SaysDone(name, seen) && !missing.empty())
        {
            findings.push_back(host::Joined({name, "answers True, and this is not stored:", missing}, " "));
        }
    }
    if (next != m_unhindered.outcomes.size())
    {
        findings.emplace_back("not all calls of the scenario were made");
    }
}

Stored Trial::LookAtStored(const norda::Snapshot& now) const
{
    std::set<norda::RowId> rows = m_unhindered.changed;
    for (const auto& change : norda::Compare(m_unhindered.before, now))
    {
        rows.insert(change.row);
    }
    Stored stored;
    for (const auto& row : rows)
    {
        AddRow(m_unhindered.before, row, stored.before);
        AddRow(m_unhindered.after, row, stored.after);
        AddRow(now, row, stored.now);
    }
    return stored;
}

void Trial::JudgeStored(player::Run& run, const Failure& failure, const Stored& stored,
                        std::vector<std::string>& findings) const
{
    const auto& [before, after, now] = stored;
    // What is written without a transaction stays when the scenario has a fault of its own.
    const bool isWhole = failure.kind != Kind::Begin || m_scenario.Find("fail") == nullptr;
    if (const auto broken = norda::FindBrokenPatient(Prescriptions(before, false), Prescriptions(after, false),
                                                     Prescriptions(now, false));
        broken && isWhole)
    {
        findings.push_back(*broken);
    }
    // As long as SISS was asked as often, each prescription had the reply that it has when nothing fails.
    const auto& exchanges = run.GetStage().Network().Exchanges();
    // Not so when the library did not get one, or had no memory for it.
    const bool replyIsLost = failure.kind == Kind::Replied || failure.kind >= Kind::Memory;
    const bool alike = exchanges.size() == m_unhindered.exchanges && !replyIsLost;
    if (const auto strange =
            FindStrangeText(Prescriptions(before, true), Prescriptions(after, true), Prescriptions(now, true));
        strange && alike)
    {
        findings.push_back(*strange);
    }
    // With journal, database and disk out of reach for good, nothing can keep a code. Where the folder does not keep
    // it, a line has said that it is not safe.
    if (!replyIsLost && !failure.forGood && !SaysCodesAreNotSafe(now))
    {
        auto kept = now;
        kept[{std::string(norda::journalTable), 0}] = {{"Riga", TextOfFolder(run.GetStage().Practice().TraceFolder())}};
        if (const auto lost = player::FindLostCode(exchanges, exchanges.size(), {before, alike ? after : now, kept}))
        {
            findings.push_back(*lost);
        }
    }
}

void Trial::PlayNext(player::Run& run, std::size_t turn, std::vector<std::string>& findings) const
{
    const auto& next = m_next.at(turn % m_next.size());
    run.FailNoMore();
    const auto first = run.Differences().size();
    PlayLines(run, next, true);
    run.Finish(next.place);
    if (const auto& all = run.Differences(); all.size() > first)
    {
        findings.push_back("the next call does not work; " + all[first].place.Text() + ": " + all[first].what);
    }
}

} // namespace vellumo::torture
