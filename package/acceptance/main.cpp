// prova SDK-FOLDER [x86|x64] [/database CONNECTION] [/setup FILE] [/report FILE] [SCENARIO…]
//
// Plays the scenarios of the SDK, or those that are named, through the installed library and writes what held. Started
// by prova.cmd. Exit code 0 when all holds, 1 when something does not, 2 when it could not be tried, 3 when this
// machine is none to try it on.
#include "host/clock.h"
#include "package/acceptance/installer_without_rights.h"
#include "package/acceptance/players.h"
#include "package/acceptance/report.h"
#include "package/acceptance/test_machine.h"
#include "platform/windows/system/text.h"

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <tuple>

namespace
{

using namespace vellumo;
using namespace vellumo::acceptance;
namespace fs = std::filesystem;

struct Arguments
{
    fs::path sdk;
    std::vector<std::string> bitnesses;
    std::string database;
    fs::path setup;
    fs::path report = "prova.html";
    std::vector<std::string> scenarios;
};

Arguments ReadArguments(const std::vector<std::string>& words)
{
    Arguments arguments;
    arguments.sdk = fs::u8path(words.at(0));
    for (std::size_t i = 1; i < words.size(); ++i)
    {
        const bool hasMore = i + 1 < words.size();
        if (words[i] == "x86" || words[i] == "x64")
        {
            arguments.bitnesses.push_back(words[i]);
        }
        else if (words[i] == "/database" && hasMore)
        {
            arguments.database = words[++i];
        }
        else if (words[i] == "/setup" && hasMore)
        {
            arguments.setup = fs::u8path(words[++i]);
        }
        else if (words[i] == "/report" && hasMore)
        {
            arguments.report = fs::u8path(words[++i]);
        }
        else if (!words[i].starts_with('/'))
        {
            arguments.scenarios.push_back(words[i]);
        }
        else
        {
            throw std::invalid_argument("Non si capisce " + words[i]);
        }
    }
    return arguments;
}

std::vector<fs::path> FilesToPlay(const Arguments& arguments)
{
    std::vector<fs::path> files;
    for (const auto& name : arguments.scenarios)
    {
        files.push_back(arguments.sdk / "scenarios" / fs::u8path(name + ".scenario"));
        if (!fs::exists(files.back()))
        {
            throw std::invalid_argument("Non c'è lo scenario " + name);
        }
    }
    for (const auto& entry : fs::directory_iterator(arguments.sdk / "scenarios"))
    {
        if (arguments.scenarios.empty() && entry.path().extension() == ".scenario")
        {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

// Where the library is registered for programs of a bitness, and a database can be opened there, all files are played.
BitnessOutcome PlayAll(const Arguments& arguments, const std::string& bitness, const std::vector<fs::path>& files)
{
    const Player player(arguments.sdk / "bin" / bitness / "scenario.exe", arguments.database);
    BitnessOutcome outcome{bitness, player.Facts(), {}, {}};
    if (outcome.Fact("Vellumo").empty())
    {
        outcome.unplayable = "la libreria non è registrata per i programmi di questo tipo.";
    }
    else if (outcome.Fact("Driver ODBC").empty())
    {
        outcome.unplayable = "il database non si apre (" + outcome.Fact("Errore") +
                             "). Senza /database serve il driver ODBC di SQLite, di questo tipo.";
    }
    for (std::size_t i = 0; outcome.unplayable.empty() && i < files.size(); ++i)
    {
        std::cout << bitness << ", " << i + 1 << " di " << files.size() << ": " << files[i].stem().string()
                  << std::flush;
        outcome.files.push_back(player.Play(files[i]));
        std::cout << (outcome.files.back().Holds() ? ", regge\n" : ", NON REGGE\n") << std::flush;
    }
    return outcome;
}

int Try(const Arguments& arguments)
{
    if (const auto why = TestMachine::WhyNot())
    {
        std::cout << *why << '\n';
        return 3;
    }
    const auto files = FilesToPlay(arguments);
    Acceptance acceptance;
    const auto day = host::SystemClock().Now().ToCalendar();
    std::array<char, 40> when{};
    std::snprintf(when.data(), when.size(), "%02d/%02d/%04d %02d:%02d", day.day, day.month, day.year, day.hour,
                  day.minute);
    acceptance.when = when.data();
    acceptance.onServer = !arguments.database.empty();
    acceptance.whole = arguments.scenarios.empty();
    acceptance.installer = "Non provata: il programma di installazione non è stato indicato (/setup FILE).";
    if (!arguments.setup.empty())
    {
        std::tie(acceptance.installer, acceptance.installerHolds) = TryInstallerWithoutRights(arguments.setup);
    }
    const TestMachine machine;
    for (const auto& bitness : arguments.bitnesses)
    {
        acceptance.bitnesses.push_back(PlayAll(arguments, bitness, files));
    }
    std::ofstream(arguments.report, std::ios::binary) << Html(acceptance);
    std::cout << "Resoconto: " << fs::absolute(arguments.report).string() << '\n';
    return Holds(acceptance) ? 0 : 1;
}

} // namespace

int main()
{
    SetConsoleOutputCP(CP_UTF8);
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> words;
    for (int i = 1; i < count; ++i)
    {
        words.push_back(windows::FromWide(wide[i]));
    }
    LocalFree(wide);
    try
    {
        auto arguments = ReadArguments(words);
        if (arguments.bitnesses.empty())
        {
            arguments.bitnesses = {"x86", "x64"};
        }
        return Try(arguments);
    }
    catch (const std::exception& fault)
    {
        std::cout << fault.what() << '\n';
        return 2;
    }
}
