#include "diagnosi/program/package_command.h"

#include "diagnosi/checks/checks.h"
#include "diagnosi/program/exchange_command.h"
#include "environment/files.h"
#include "host/fault.h"
#include "host/trace_files.h"
#include "host/version.h"

#include <cstdlib>
#include <ostream>

namespace vellumo::diagnosi
{
namespace
{

void Write(const Task& task, const std::string& file, const std::string& bytes)
{
    if (!environment::WriteFile(file, bytes))
    {
        throw host::Fault("Il file non può essere scritto: " + file + ".");
    }
    task.out << file << '\n';
}

} // namespace

PackageSource SourceOf(const Machine& machine, const Period& period)
{
    const char* const user = std::getenv("USERNAME");
    return {LogFolder(machine),
            TraceFolder(machine),
            period,
            "Vellumo " + std::string(host::fullVersion) + "\n\n" + ReportOf(RunChecks(machine)),
            machine.clock.Now(),
            {host::MachineName(), user != nullptr ? user : ""}};
}

ExitCode RunPackage(const Task& task)
{
    const host::Date now = task.machine.clock.Now();
    const Period period = PeriodOf(task.arguments, now);
    const Package package = MakePackage(SourceOf(task.machine, period));
    task.out << "Registro degli scambi " << PeriodText(period) << ". Mascherati nel pacchetto:\n";
    for (const auto& line : package.masked)
    {
        task.out << "  " << line << '\n';
    }
    const auto fileNamed = [&](std::string_view name, std::string_view ending)
    { return task.arguments.Value("--file").value_or(TemporaryFile(name, ending, now)); };
    if (task.arguments.Has("--anteprima"))
    {
        task.out << "Questa pagina mostra tutto ciò che uscirebbe dallo studio; aprirla nel browser e guardarla:\n";
        Write(task, fileNamed("anteprima pacchetto", ".html"), package.page);
        return ExitCode::Done;
    }
    if (!task.arguments.Has("--conferma"))
    {
        task.out << package.files.size()
                 << " file. Non è stato scritto niente: --anteprima scrive la pagina da guardare, "
                 << "--conferma il pacchetto.\n";
        return ExitCode::Attention;
    }
    Write(task, fileNamed("pacchetto assistenza", ".zip"), ZipOf(package));
    return ExitCode::Done;
}

} // namespace vellumo::diagnosi
