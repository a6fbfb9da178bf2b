#include "diagnosi/program/check_command.h"

#include "diagnosi/checks/checks.h"
#include "host/version.h"

#include <algorithm>
#include <ostream>

namespace vellumo::diagnosi
{

ExitCode RunCheck(const Task& task)
{
    Machine machine = task.machine;
    machine.databases = {task.arguments.Value("--connessione", ""), task.arguments.Value("--connessione-norda", "")};
    const auto checked = RunChecks(machine);
    const auto bad = std::ranges::count_if(checked, [](const Checked& one) { return one.finding.state != State::Ok; });
    task.out << "Vellumo " << host::fullVersion << ", programmi a " << 8 * sizeof(void*) << " bit\n\n"
             << ReportOf(checked) << '\n'
             << checked.size() << " controlli, " << bad << " da guardare\n";
    return static_cast<ExitCode>(Worst(checked)); // both are ok, attention, wrong
}

} // namespace vellumo::diagnosi
