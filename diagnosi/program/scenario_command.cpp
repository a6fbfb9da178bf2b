#include "diagnosi/program/scenario_command.h"

#include "diagnosi/program/exchange_command.h"
#include "diagnosi/replay/package_log.h"
#include "diagnosi/replay/replay.h"
#include "environment/files.h"
#include "host/fault.h"

#include <optional>
#include <ostream>

namespace vellumo::diagnosi
{
ExitCode RunScenario(const Task& task)
{
    const auto& operands = task.arguments.Operands();
    const auto source = operands.empty() ? LogFolder(task.machine) : operands.front();
    const auto package = environment::FileExists(source) ? environment::ReadFile(source) : std::nullopt;
    if (!package && !environment::FolderExists(source))
    {
        throw host::Fault("La cartella o il pacchetto " + source + " non c'è.");
    }
    std::optional<PackageLog> unpacked;
    if (package)
    {
        unpacked.emplace(*package);
    }
    const auto folder = unpacked ? unpacked->Folder() : source;
    const auto asksFor = [&](const char* option) { return task.arguments.Has(option); };
    const bool all = !asksFor("--giorni") && !asksFor("--dal") && !asksFor("--al"); // cases may be old
    const auto period = all ? Period() : PeriodOf(task.arguments, task.machine.clock.Now());
    const auto scenario = ScenarioOf(ReadExchanges(folder, period));
    if (scenario.empty())
    {
        task.out << "In " << source << " non c'è niente che si possa ripetere.\n";
        return ExitCode::Attention;
    }
    const auto file = task.arguments.Value("--file");
    if (!file)
    {
        task.out << scenario;
        return ExitCode::Done;
    }
    if (!environment::WriteFile(*file, scenario))
    {
        throw host::Fault("Non è stato possibile scrivere " + *file + ".");
    }
    task.out << "Scenario scritto in " << *file << ". Contiene i dati del registro: va custodito come quello.\n";
    return ExitCode::Done;
}

} // namespace vellumo::diagnosi
