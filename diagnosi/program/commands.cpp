#include "diagnosi/program/check_command.h"
#include "diagnosi/program/cleaning_command.h"
#include "diagnosi/program/command.h"
#include "diagnosi/program/exchange_command.h"
#include "diagnosi/program/package_command.h"
#include "diagnosi/program/scenario_command.h"
#include "host/fault.h"
#include "host/text.h"
#include "host/version.h"

#include <algorithm>
#include <array>
#include <ostream>

namespace vellumo::diagnosi
{
namespace
{

constexpr const char* program = "VellumoDiagnosi";

void WriteColumn(std::ostream& out, std::string text, std::string_view meaning)
{
    constexpr std::size_t width = 34;
    text.resize(std::max(width, text.size() + 1), ' ');
    out << text << meaning << '\n';
}

void WriteHelp(std::ostream& out)
{
    out << program << ": controlla l'installazione di Vellumo e aiuta l'assistenza.\n\n"
        << "uso: " << program << " COMANDO [OPZIONI]\n"
        << "     " << program << "                  senza argomenti apre la finestra\n\n";
    for (const Command& command : Commands())
    {
        WriteColumn(out, "  " + std::string(command.name) + ' ' + std::string(command.operands), command.purpose);
        for (const Option& option : command.options)
        {
            WriteColumn(out, "    " + std::string(option.name) + ' ' + std::string(option.value), option.meaning);
        }
    }
    WriteColumn(out, "  --help", "mostra questo testo");
    WriteColumn(out, "  --version", "mostra la versione");
    out << "\nCodice di uscita: 0 tutto bene, 1 qualcosa da guardare, 2 qualcosa non va, 3 non eseguito.\n"
           "Il programma non cambia nulla su questo computer se non gli viene chiesto.\n";
}

const Command& Find(const std::string& name)
{
    const auto commands = Commands();
    const auto found = std::ranges::find(commands, name, &Command::name);
    if (found == commands.end())
    {
        throw host::Fault("Il comando \"" + name + "\" non è conosciuto; " + program + " --help li mostra.");
    }
    return *found;
}

} // namespace

std::span<const Command> Commands()
{
    static constexpr auto commands = std::to_array<Command>({
        {"controlla", "", 0, "controlla l'installazione e dice che cosa fare", checkOptions, RunCheck},
        {"scambi", "[CARTELLA]", 1, "mostra il registro degli scambi con il SISS come pagina per il browser",
         exchangeOptions, RunExchanges},
        {"pacchetto", "", 0, "raccoglie per l'assistenza controlli, registro e tracce, senza dati personali",
         packageOptions, RunPackage},
        {"scenario", "[CARTELLA o PACCHETTO]", 1, "fa del registro degli scambi uno scenario per chi sviluppa",
         scenarioOptions, RunScenario},
        {"pulizia", "", 0, "elenca ed elimina il registro degli scambi più vecchio di quanto serve", cleaningOptions,
         RunCleaning},
    });
    return commands;
}

ExitCode Run(std::span<const std::string> words, Machine& machine, std::ostream& out)
{
    if (words.empty() || words.front() == "--help")
    {
        WriteHelp(out);
        return words.empty() ? ExitCode::NotDone : ExitCode::Done;
    }
    if (words.front() == "--version")
    {
        out << program << ' ' << host::fullVersion << '\n';
        return ExitCode::Done;
    }
    try
    {
        const Command& command = Find(words.front());
        const Arguments arguments(words.subspan(1), command.options, command.mostOperands);
        return command.run({machine, arguments, out});
    }
    catch (const std::exception& fault)
    {
        out << program << ": " << fault.what() << '\n';
        return ExitCode::NotDone;
    }
}

std::string WithWindowsLines(std::string_view text)
{
    return host::Replaced(std::string(text), "\n", "\r\n");
}

} // namespace vellumo::diagnosi
