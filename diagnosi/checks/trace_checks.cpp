#include "diagnosi/checks/trace_checks.h"

#include "environment/ansi_text.h"
#include "environment/files.h"
#include "environment/siss_date_time.h"
#include "host/trace_files.h"
#include "service/journal.h"
#include "service/trace_folder.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <sstream>
#include <vector>

namespace vellumo::diagnosi
{
namespace
{

constexpr int days = 7;
constexpr std::size_t mostShown = 3;

std::vector<std::string> LinesOf(const std::string& bytes)
{
    std::vector<std::string> lines;
    std::istringstream in(bytes);
    for (std::string line; std::getline(in, line);)
    {
        lines.push_back(environment::FromAnsi(line.substr(0, line.find('\r'))));
    }
    return lines;
}

void AddOpenCodes(const std::string& path, Findings& findings)
{
    const auto file = host::ExclusiveFile::Take(path);
    if (!file) // the program that writes it is open
    {
        return;
    }
    const auto lines = LinesOf(file->Read().value_or(""));
    const auto open = std::ranges::count_if(lines, [](const auto& line) { return line.starts_with('*'); });
    if (open != 0)
    {
        findings.Add({State::Attention,
                      "Codici del SISS non ancora salvati: " + std::to_string(open) + ", in " + path + ".",
                      "Aprire il programma di cartella clinica di questo studio, che li scrive nel giornale; poi fare "
                      "quanto dicono le pagine dell'assistenza, \"Il programma si è chiuso durante le ricette\". Non "
                      "cancellare il file."});
    }
}

// A line begins "2026-11-22 13.22.43 Vellumo".
bool IsOfLastDays(const std::string& line, host::Date now)
{
    constexpr std::size_t stamp = 19;
    const auto time = environment::TimeOfStamp(std::string_view(line).substr(0, stamp));
    return time && line.find(service::toCheck) != std::string::npos && now.DayNumber() - time->DayNumber() < days;
}

void AddLinesToCheck(std::vector<std::string> lines, Findings& findings)
{
    if (lines.empty())
    {
        return;
    }
    std::ranges::sort(lines, std::greater<>());
    std::string found = "Righe \"DA CONTROLLARE\" degli ultimi " + std::to_string(days) +
                        " giorni: " + std::to_string(lines.size()) + ". Le più recenti:";
    for (std::size_t i = 0; i < std::min(lines.size(), mostShown); ++i)
    {
        found += '\n' + lines[i];
    }
    findings.Add({State::Attention, found,
                  "Per ciascuna fare quanto dicono le pagine dell'assistenza, \"Cosa vuol dire questa riga del "
                  "giornale?\", se nessuno l'ha già fatto."});
}

} // namespace

Finding CheckTraces(const Machine& machine)
{
    const std::string folder = TraceFolder(machine);
    const host::Date now = machine.clock.Now();
    Findings findings;
    std::vector<std::string> toCheck;
    for (const auto& name : host::NamesIn(folder))
    {
        const std::string path = environment::JoinPath(folder, name);
        if (name.starts_with(service::codeFilePrefix))
        {
            AddOpenCodes(path, findings);
        }
        else if (name.starts_with(service::lineFilePrefix))
        {
            std::ranges::copy_if(LinesOf(environment::ReadFile(path).value_or("")), std::back_inserter(toCheck),
                                 [&](const auto& line) { return IsOfLastDays(line, now); });
        }
    }
    AddLinesToCheck(std::move(toCheck), findings);
    return findings.Sum("Niente da controllare negli ultimi " + std::to_string(days) + " giorni.");
}

} // namespace vellumo::diagnosi
