#include "diagnosi/checks/checks.h"

#include "diagnosi/checks/client_checks.h"
#include "diagnosi/checks/database_checks.h"
#include "diagnosi/checks/folder_checks.h"
#include "diagnosi/checks/platform_checks.h"
#include "diagnosi/checks/template_checks.h"
#include "diagnosi/checks/trace_checks.h"

#include <algorithm>
#include <exception>

namespace vellumo::diagnosi
{
namespace
{

Finding RunOne(const Check& check, const Machine& machine)
{
    try
    {
        return check.run(machine);
    }
    catch (const std::exception& fault)
    {
        return {State::Error, std::string("Il controllo non è riuscito: ") + fault.what(),
                "Ripetere il controllo; se non riesce di nuovo, mandare questo testo all'assistenza di Vellumo."};
    }
}

// Below a heading, each line of the text.
std::string Indented(const std::string& heading, const std::string& text)
{
    std::string lines;
    for (std::size_t begin = 0; !text.empty() && begin <= text.size();)
    {
        const auto end = std::min(text.find('\n', begin), text.size());
        lines += (begin == 0 ? heading : std::string(heading.size(), ' ')) + text.substr(begin, end - begin) + '\n';
        begin = end + 1;
    }
    return lines;
}

} // namespace

std::span<const Check> Checks()
{
    static const std::vector<Check> checks = []
    {
        const auto first = PlatformChecks();
        std::vector<Check> all(first.begin(), first.end());
        all.insert(all.end(), {
                                  {"Cartella del programma", CheckHostFolder},
                                  {"Scrittura del registro degli scambi", CheckLogFolder},
                                  {"Scrittura delle tracce", CheckTraceFolder},
                                  {"Da controllare nelle tracce", CheckTraces},
                                  {"Modelli delle richieste", CheckTemplates},
                                  {"Cartelle del client SISS", CheckClientFolders},
                                  {"Configurazione del client SISS", CheckClientConfiguration},
                                  {"Tabelle regionali", CheckRegionalTables},
                                  {"Database del programma", CheckDatabase},
                              });
        return all;
    }();
    return checks;
}

std::vector<Checked> RunChecks(const Machine& machine, const std::function<void(const Check&)>& onStart)
{
    std::vector<Checked> checked;
    for (const Check& check : Checks())
    {
        if (onStart)
        {
            onStart(check);
        }
        checked.push_back({&check, RunOne(check, machine)});
    }
    return checked;
}

State Worst(std::span<const Checked> checked) noexcept
{
    State worst = State::Ok;
    for (const auto& one : checked)
    {
        worst = std::max(worst, one.finding.state);
    }
    return worst;
}

std::string ReportOf(std::span<const Checked> checked)
{
    std::string report;
    for (const auto& [check, finding] : checked)
    {
        std::string state = NameOf(finding.state);
        state.resize(12, ' ');
        report += state + check->name + '\n' + Indented("            ", finding.found) +
                  Indented("            Cosa fare: ", finding.remedy);
    }
    return report;
}

} // namespace vellumo::diagnosi
