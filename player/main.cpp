// scenario [--tell] [--strict] [--screenshots DIR] [--keep DIR] FILE…
// scenario --statements DOCUMENT
//
// Runs the scenarios of the files, each in a practice made new for it, and says what differed. Exit code 0 when all
// hold, 1 when one does not, 2 when a file cannot be read. `--statements` writes the tables of docs/scenarios.md anew.
#include "player/runner.h"
#include "player/scenario.h"
#include "player/written.h"

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
};

std::optional<Arguments> ReadArguments(const std::vector<std::string>& words)
{
    Arguments arguments;
    const std::map<std::string, fs::path*> paths = {{"--screenshots", &arguments.options.screenshots},
                                                    {"--keep", &arguments.options.keep},
                                                    {"--statements", &arguments.document}};
    for (std::size_t i = 0; i < words.size(); ++i)
    {
        const auto path = paths.find(words[i]);
        if (path != paths.end() && i + 1 < words.size())
        {
            *path->second = fs::u8path(words[++i]);
        }
        else if (words[i] == "--tell")
        {
            arguments.options.tell = true;
        }
        else if (words[i] == "--strict")
        {
            arguments.options.strict = true;
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
    return arguments.files.empty() && arguments.document.empty() ? std::nullopt : std::optional(arguments);
}

} // namespace

int main(int count, char** words)
{
    const auto arguments = ReadArguments({words + 1, words + count});
    if (!arguments)
    {
        std::cerr << "usage: scenario [--tell] [--strict] [--screenshots DIR] [--keep DIR] FILE...\n"
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
