// scenario [--tell] [--outcomes] [--strict] [--renamed] [--screenshots DIR] [--keep DIR] [--database CONNECTION] FILE…
// scenario --facts [--database CONNECTION]
// scenario --statements DOCUMENT
//
// Runs the scenarios of the files, each in a practice made new for it, and says what differed. Exit code 0 when all
// hold, 1 when one does not, 2 when a file cannot be read. With `--renamed` the host's objects have other
// names than those that the library expects, which it is told (Windows). `--outcomes` names those that hold, too.
// `--database` is the connection string of a SQL Server, on which two databases of the player's own are made and
// removed. `--facts` tells what it finds on this machine, a line each with a tab between. `--statements` writes the
// tables of docs/scenarios.md anew.
#include "player/runner.h"
#include "player/scenario.h"
#include "player/written.h"
#include "simulator/norda/server_databases.h"
#include "simulator/norda/workstation.h"

#include <fstream>
#include <iostream>
#include <map>
#include <optional>

namespace
{

using namespace vellumo;
using namespace vellumo::player;
namespace fs = std::filesystem;

struct Arguments
{
    Runner::Options options;
    std::vector<fs::path> files;
    fs::path document;
    bool facts = false;
};

std::optional<Arguments> ReadArguments(const std::vector<std::string>& words)
{
    Arguments arguments;
    const std::map<std::string, fs::path*> paths = {{"--screenshots", &arguments.options.screenshots},
                                                    {"--keep", &arguments.options.keep},
                                                    {"--statements", &arguments.document}};
    const std::map<std::string, bool*> flags = {{"--tell", &arguments.options.tell},
                                                {"--strict", &arguments.options.strict},
                                                {"--renamed", &arguments.options.renamed},
                                                {"--outcomes", &arguments.options.outcomes},
                                                {"--facts", &arguments.facts}};
    for (std::size_t i = 0; i < words.size(); ++i)
    {
        const auto path = paths.find(words[i]);
        if (path != paths.end() && i + 1 < words.size())
        {
            *path->second = fs::u8path(words[++i]);
        }
        else if (const auto flag = flags.find(words[i]); flag != flags.end())
        {
            *flag->second = true;
        }
        else if (words[i] == "--database" && i + 1 < words.size())
        {
            arguments.options.database = words[++i];
        }
        else if (words[i] == "--apart" && i + 2 < words.size()) // how the player starts itself
        {
            arguments.options.apartLine = std::stoi(words[++i]);
            arguments.options.apartStatement = std::stoul(words[++i]);
        }
        else if (words[i].starts_with("--"))
        {
            return std::nullopt;
        }
        else
        {
            arguments.files.push_back(fs::u8path(words[i]));
        }
    }
    const bool hasNothing = arguments.files.empty() && arguments.document.empty() && !arguments.facts;
    return hasNothing ? std::nullopt : std::optional(arguments);
}

void TellFacts(const std::string& server)
{
    for (const auto& [name, value] : norda::MachineFacts())
    {
        std::cout << name << '\t' << value << '\n';
    }
    const auto folder = fs::temp_directory_path() / "vellumo-fatti";
    const auto database =
        server.empty() ? norda::Database::OpenSqlite(folder, folder) : norda::ServerDatabases(server).OpenMaster();
    std::cout << "Driver ODBC\t" << database->DriverName() << "\nDatabase\t" << database->ServerName() << '\n';
}

} // namespace

int main(int count, char** words)
{
    const auto arguments = ReadArguments({words + 1, words + count});
    if (!arguments)
    {
        std::cerr << "usage: scenario [--tell] [--outcomes] [--strict] [--renamed] [--screenshots DIR] [--keep DIR] "
                     "[--database CONNECTION] FILE...\n"
                     "       scenario --facts [--database CONNECTION]\n"
                     "       scenario --statements DOCUMENT\n"
                     "docs/scenarios.md tells how a scenario is written.\n";
        return 2;
    }
    try
    {
        if (!arguments->document.empty())
        {
            const auto text = FileText(arguments->document);
            std::ofstream(arguments->document, std::ios::binary) << WithStatementTables(text);
            return 0;
        }
        if (arguments->facts)
        {
            TellFacts(arguments->options.database);
            return 0;
        }
        Runner runner(arguments->options, std::cout);
        std::size_t failed = 0;
        for (const auto& file : arguments->files)
        {
            failed += runner.RunFile(file);
        }
        runner.Summary(failed);
        return failed == 0 ? 0 : 1;
    }
    catch (const std::exception& fault)
    {
        std::cerr << fault.what() << '\n';
        return 2;
    }
}
