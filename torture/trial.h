// One scenario played with one call failing, and judged: what came back from the host's calls, what is stored, what is
// left open or behind, and whether the next call works.
#pragma once

#include "player/run.h"
#include "player/scenario.h"
#include "simulator/norda/snapshot.h"
#include "torture/canaries.h"
#include "torture/outside_call.h"

#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace vellumo::torture
{

// How a scenario goes when nothing fails.
struct Unhindered
{
    Counts calls{};
    norda::Snapshot before;
    norda::Snapshot after;
    std::set<norda::RowId> changed;
    std::vector<player::Outcome> outcomes;
    Canaries canaries;
    std::size_t exchanges = 0;            // with SISS
    std::size_t blocks = 0;               // of memory that it leaves behind, all of them for good
    std::vector<std::string> differences; // it does not hold
};

// The rows that are not the same before, after and now. The others say nothing, and are many.
struct Stored
{
    norda::Snapshot before;
    norda::Snapshot after;
    norda::Snapshot now;
};

struct Verdict
{
    std::vector<std::string> findings;
    Observed seen;
};

class Trial
{
public:
    // `next`: the scenarios one of which is played behind each, by turns, with nothing failing any more. Both outlive
    // the trial.
    // `tells`: it is told what happens.
    Trial(const player::Scenario& scenario, const std::vector<player::Scenario>& next,
          const std::filesystem::path& model, std::filesystem::path folder, bool tells);

    // Must be first.
    [[nodiscard]] const Unhindered& PlayUnhindered();
    [[nodiscard]] Verdict Play(const Failure& failure);

private:
    void LookAtUnhindered(std::size_t time);
    [[nodiscard]] Verdict PlayOnce(const Failure& failure);
    [[nodiscard]] Stored LookAtStored(const norda::Snapshot& now) const;
    void JudgeAnswers(player::Run& run, const Stored& stored, std::vector<std::string>& findings) const;
    void JudgeStored(player::Run& run, const Failure& failure, const Stored& stored,
                     std::vector<std::string>& findings) const;
    void PlayNext(player::Run& run, std::size_t turn, std::vector<std::string>& findings) const;
    [[nodiscard]] std::unique_ptr<player::Run> MakeRun(const std::filesystem::path& folder, bool lenient);

    const player::Scenario& m_scenario;
    const std::vector<player::Scenario>& m_next;
    const std::filesystem::path& m_model;
    std::filesystem::path m_folder;
    player::Narrator m_narrator;
    player::Narrator m_silence; // nobody wants to hear of what goes well
    Unhindered m_unhindered;
};

} // namespace vellumo::torture
