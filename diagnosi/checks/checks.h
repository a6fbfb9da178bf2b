// The checks of an installation, one row each, in the order in which a person would look. A check that faults ends as
// an error with the fault's text. None of them leaves anything behind; what is tried, such as writing into a folder, is
// taken away again.
#pragma once

#include "diagnosi/checks/finding.h"
#include "diagnosi/checks/machine.h"

#include <functional>
#include <span>
#include <vector>

namespace vellumo::diagnosi
{

struct Check
{
    const char* name; // what is checked, Italian
    Finding (*run)(const Machine& machine);
};

struct Checked
{
    const Check* check;
    Finding finding;
};

// All that this platform has.
[[nodiscard]] std::span<const Check> Checks();

// `onStart` hears of each check before it runs: some take a second.
[[nodiscard]] std::vector<Checked> RunChecks(const Machine& machine,
                                             const std::function<void(const Check&)>& onStart = {});

[[nodiscard]] State Worst(std::span<const Checked> checked) noexcept;

// A line for each, with what was found and what to do below those that are not ok.
[[nodiscard]] std::string ReportOf(std::span<const Checked> checked);

} // namespace vellumo::diagnosi
