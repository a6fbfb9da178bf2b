#include "diagnosi/checks/folder_checks.h"

#include "environment/files.h"
#include "environment/siss_configuration.h"
#include "host/path.h"

#include <filesystem>

namespace vellumo::diagnosi
{
namespace
{

namespace fs = std::filesystem;
using environment::FolderExists;
using environment::JoinPath;

bool Exists(const std::string& path)
{
    std::error_code error;
    return fs::exists(host::NativePath(path), error);
}

bool Remove(const std::string& path)
{
    std::error_code error;
    return fs::remove(host::NativePath(path), error);
}

// What stands in the place of a folder and is none.
Finding NoFolder(const std::string& path)
{
    return {State::Error, "Al posto della cartella " + path + " c'è un file.",
            "Rinominare o spostare il file " + path +
                "; la cartella viene creata dall'installazione o alla prima scrittura."};
}

// Tries to make a folder or file and takes it away again.
bool CanWriteInto(const std::string& folder)
{
    const std::string trial = JoinPath(folder, "prova di VellumoDiagnosi");
    const bool written = environment::CreateFolder(trial) && environment::WriteFile(JoinPath(trial, "prova"), "prova");
    Remove(JoinPath(trial, "prova"));
    return (Remove(trial) || !Exists(trial)) && written;
}

Finding CheckWriting(const Machine& machine, const std::string& folder)
{
    if (!FolderExists(SissFolder(machine)))
    {
        return {State::Error, "Non si può scrivere in " + folder + ": manca la cartella che la contiene.",
                "Rimediare prima a quanto detto della cartella del programma."};
    }
    const std::string rights = "Dare agli utenti di questo computer il permesso di creare e modificare file in " +
                               folder + " (proprietà della cartella, scheda Sicurezza).";
    if (!Exists(folder))
    {
        // It is made when it is first needed.
        const bool made = environment::CreateFolder(folder);
        const bool written = made && CanWriteInto(folder);
        Remove(folder);
        return written ? Finding{State::Ok, "La cartella " + folder + " non c'è ancora e può essere creata."}
                       : Finding{State::Error, "La cartella " + folder + " non c'è e non può essere creata.",
                                 "Creare la cartella. " + rights};
    }
    if (!FolderExists(folder))
    {
        return NoFolder(folder);
    }
    return CanWriteInto(folder) ? Finding{State::Ok, folder + ": scrittura riuscita."}
                                : Finding{State::Error, "Questo utente non può scrivere in " + folder + ".", rights};
}

} // namespace

Finding CheckHostFolder(const Machine& machine)
{
    const std::string folder = environment::HostProgramFolder(machine.settings);
    const std::string siss = SissFolder(machine);
    if (folder.empty())
    {
        return {State::Error,
                "Non è scritto dove si trova il programma di cartella clinica (App Paths\\Norda.exe, valore Path).",
                "Installare di nuovo il programma di cartella clinica, poi Vellumo."};
    }
    if (!FolderExists(folder))
    {
        return {State::Error, "La cartella del programma, " + folder + ", non c'è.",
                "Installare di nuovo il programma di cartella clinica, o correggere il valore Path di App "
                "Paths\\Norda.exe."};
    }
    if (Exists(siss) && !FolderExists(siss))
    {
        return NoFolder(siss);
    }
    return FolderExists(siss) ? Finding{State::Ok, folder}
                              : Finding{State::Error, "Manca la cartella " + siss + ".",
                                        "Installare di nuovo Vellumo, indicando la cartella " + folder + "."};
}

Finding CheckLogFolder(const Machine& machine)
{
    return CheckWriting(machine, LogFolder(machine));
}

Finding CheckTraceFolder(const Machine& machine)
{
    return CheckWriting(machine, TraceFolder(machine));
}

} // namespace vellumo::diagnosi
