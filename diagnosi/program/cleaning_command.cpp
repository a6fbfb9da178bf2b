#include "diagnosi/program/cleaning_command.h"

#include "diagnosi/checks/old_logs.h"
#include "host/fault.h"

#include <ostream>

namespace vellumo::diagnosi
{
namespace
{

void List(std::ostream& out, const std::vector<std::string>& names)
{
    for (const auto& name : names)
    {
        out << "  " << name << '\n';
    }
}

} // namespace

ExitCode RunCleaning(const Task& task)
{
    if (!task.arguments.Has("--giorni"))
    {
        throw host::Fault("Manca --giorni N: quanti giorni lo studio conserva il registro degli scambi.");
    }
    const int days = task.arguments.Number("--giorni", 0);
    const auto old = OldLogFolders(task.machine, days);
    task.out << LogFolder(task.machine) << ": " << old.size() << " cartelle più vecchie di " << days << " giorni\n";
    List(task.out, old);
    if (!task.arguments.Has("--elimina"))
    {
        task.out << (old.empty() ? "" : "Nulla è stato eliminato: per farlo aggiungere --elimina.\n");
        return old.empty() ? ExitCode::Done : ExitCode::Attention;
    }
    const auto left = RemoveLogFolders(task.machine, old);
    task.out << "Eliminate: " << old.size() - left.size() << '\n';
    if (!left.empty())
    {
        task.out << "Non è stato possibile eliminare del tutto (in uso, senza permesso o con altro dentro): "
                 << left.size() << '\n';
        List(task.out, left);
    }
    return left.empty() ? ExitCode::Done : ExitCode::Wrong;
}

} // namespace vellumo::diagnosi
