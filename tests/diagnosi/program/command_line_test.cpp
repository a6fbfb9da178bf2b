// The support program's command line: what is understood, what is refused, and the exit codes that scripts rely on.
#include "diagnosi/program/command.h"
#include "tests/support/installation.h"

#include <doctest.h>

#include <sstream>

using namespace vellumo;
using diagnosi::ExitCode;

namespace
{

struct ProgramAnswer
{
    ExitCode exitCode;
    std::string text;
};

ProgramAnswer AskProgram(const std::vector<std::string>& words)
{
    tests::Installation installation;
    diagnosi::Machine machine{installation.settings, installation.clock};
    std::ostringstream out;
    const auto exitCode = diagnosi::Run(words, machine, out);
    return {exitCode, out.str()};
}

bool Contains(const std::string& text, std::string_view part)
{
    return text.find(part) != std::string::npos;
}

} // namespace

TEST_CASE("help names every command and option, and the exit codes")
{
    const auto help = AskProgram({"--help"});
    CHECK(help.exitCode == ExitCode::Done);
    for (const auto& command : diagnosi::Commands())
    {
        CHECK(Contains(help.text, "\n  " + std::string(command.name) + ' '));
        for (const auto& option : command.options)
        {
            CHECK(Contains(help.text, "\n    " + std::string(option.name) + ' '));
        }
    }
    CHECK(Contains(help.text, "Codice di uscita: 0 "));
    CHECK(AskProgram({}).exitCode == ExitCode::NotDone);
}

TEST_CASE("what is not understood is not done, and says why")
{
    CHECK(Contains(AskProgram({"--version"}).text, "VellumoDiagnosi "));
    const std::vector<std::pair<std::vector<std::string>, const char*>> wrong = {
        {{"controllo"}, "Il comando \"controllo\" non è conosciuto"},
        {{"controlla", "--tutto"}, "L'opzione --tutto non è conosciuta."},
        {{"controlla", "--connessione"}, "L'opzione --connessione vuole un valore: STRINGA."},
        {{"controlla", "C:\\Norda"}, "Non è chiaro che cosa sia \"C:\\Norda\"."},
    };
    for (const auto& [words, why] : wrong)
    {
        const auto answer = AskProgram(words);
        CHECK(answer.exitCode == ExitCode::NotDone);
        CHECK_MESSAGE(Contains(answer.text, why), answer.text);
    }
}

TEST_CASE("the exit code is that of the worst check")
{
    CHECK(AskProgram({"controlla"}).exitCode == ExitCode::Wrong); // an installation without any folder
}
