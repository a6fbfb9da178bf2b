#include "diagnosi/checks/client_checks.h"

#include "environment/files.h"
#include "environment/siss_configuration.h"
#include "environment/siss_environment.h"
#include "environment/siss_import_table.h"
#include "host/fault.h"
#include "host/text.h"

#include <algorithm>
#include <array>
#include <string>

namespace vellumo::diagnosi
{
namespace
{

using environment::FolderExists;
using environment::SISSConfiguration;
using environment::SISSEnvironment;
using environment::SISSImportIndex;

constexpr const char* reinstallClient =
    "Installare di nuovo il client SISS su questo computer, o chiedere all'assistenza SISS.";
constexpr const char* startClient =
    "Avviare il client SISS e lasciargli aggiornare le tabelle; se non lo fa, chiedere all'assistenza SISS.";

// Of the three tables that the library knows, the columns that it reads.
struct TableNeed
{
    const char* name;
    std::array<const char*, 4> columns;
};

constexpr std::array<TableNeed, 3> tables = {{
    {"ESENZIONI", {"CD_APPLICATIVO", "DS_ESENZIONE_SISS", "DT_INIZIO_VALIDITA", "DT_FINE_VALIDITA"}},
    {"BRANCHE_SPECIALISTICHE", {"CD_BRANCA_SPECIALISTICA", "DS_BRANCA_SPECIALISTICA"}},
    {"MAPPING_REGIONALE", {"CD_APPLICATIVO", "DS_PRESTAZIONE_SISS"}},
}};

const SISSImportIndex* EntryOf(const environment::SISSImportIndexs& index, std::string_view name)
{
    const auto found =
        std::find_if(index.begin(), index.end(),
                     [&](const SISSImportIndex& entry) { return host::EqualsIgnoringCase(entry.Name, name); });
    return found == index.end() ? nullptr : &*found;
}

void CheckTable(const SISSEnvironment& client, const SISSImportIndex& entry, const TableNeed& need, Findings& findings)
{
    const std::string name = "La tabella regionale " + entry.Name + " (" + entry.Filename + ".txt) ";
    try
    {
        const auto table = client.GetImportTable(entry);
        for (const char* column : need.columns)
        {
            if (column != nullptr && table.Columns().Find(column) == nullptr)
            {
                findings.Add({State::Error, name + "non ha la colonna " + column + ".", startClient});
            }
        }
        if (table.RowCount() == 0)
        {
            findings.Add({State::Attention, name + "non ha righe.", startClient});
        }
    }
    catch (const host::Fault& fault)
    {
        findings.Add({State::Error, name + "non può essere letta: " + fault.Description(), startClient});
    }
    if (entry.UpdateDateTime.IsZero())
    {
        findings.Add({State::Attention, name + "non ha nell'indice una data che si possa leggere.", startClient});
    }
}

} // namespace

Finding CheckClientFolders(const Machine& machine)
{
    const SISSConfiguration client(machine.settings);
    for (const auto& folder :
         {client.ProgramFolder(), client.WorkingFolder(), client.ConfigFolder(), client.ImportWorkingFolder()})
    {
        if (!FolderExists(folder))
        {
            return {State::Error, "Manca la cartella " + folder + " del client SISS.",
                    std::string("Se il client SISS è installato in un'altra cartella, indicarla nelle impostazioni del "
                                "programma di cartella clinica. Altrimenti: ") +
                        reinstallClient};
        }
    }
    return {State::Ok, client.ProgramFolder()};
}

Finding CheckClientConfiguration(const Machine& machine)
{
    const SISSConfiguration client(machine.settings);
    const std::string file = environment::JoinPath(client.ConfigFolder(), "WINBRIDGE4SEBACTIVEX.conf");
    if (!environment::FileExists(file))
    {
        return {State::Attention, "Manca il file " + file + ".", reinstallClient};
    }
    if (!environment::ReadFile(file))
    {
        return {State::Attention, "Il file " + file + " non può essere letto da questo utente.",
                "Dare agli utenti il permesso di leggere il file."};
    }
    return {State::Ok, client.IsPersonaleStudio() ? "Modalità DUMPER (personale di studio)." : "Modalità normale."};
}

Finding CheckRegionalTables(const Machine& machine)
{
    constexpr std::int32_t staleAfter = 365; // days; the region changes its tables several times a year
    SISSEnvironment client(machine.settings, machine.clock);
    const std::string master =
        environment::JoinPath(client.Configuration().ImportWorkingFolder(), client.DefaultIndex().Filename + ".txt");
    const auto& index = client.ImportIndexs();
    if (index.Count() == 0)
    {
        return {State::Error, "L'indice delle tabelle regionali, " + master + ", manca o non può essere letto.",
                startClient};
    }
    Findings findings;
    host::Date newest;
    std::string dates;
    for (const auto& need : tables)
    {
        if (const auto* entry = EntryOf(index, need.name))
        {
            CheckTable(client, *entry, need, findings);
            newest = std::max(newest, entry->UpdateDateTime);
            dates += (dates.empty() ? "" : ", ") + entry->Name + " " + entry->UpdateDateTime.ToDayText();
        }
        else
        {
            findings.Add({State::Error, std::string("L'indice ") + master + " non nomina la tabella " + need.name + ".",
                          startClient});
        }
    }
    if (!newest.IsZero() && machine.clock.Now().DayNumber() - newest.DayNumber() > staleAfter)
    {
        findings.Add({State::Attention,
                      "L'indice delle tabelle regionali è vecchio: la data più recente è " + newest.ToDayText() + ".",
                      startClient});
    }
    return findings.Sum(dates);
}

} // namespace vellumo::diagnosi
