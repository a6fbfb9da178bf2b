// What was seen of one bitness while the acceptance kit ran.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vellumo::acceptance
{

struct FileOutcome
{
    std::string file; // "certificati"
    std::vector<std::string> titles;
    std::vector<std::string> failed; // of the titles
    std::string broken;              // why the file could not be played to its end; "" when it was
    std::string output;              // of the player, where something differed

    [[nodiscard]] bool Holds() const { return failed.empty() && broken.empty(); }
};

struct BitnessOutcome
{
    std::string name; // "x86"
    std::vector<std::pair<std::string, std::string>> facts;
    std::string unplayable; // why nothing could be played; "" when it could
    std::vector<FileOutcome> files;

    // "" for one that is not there.
    [[nodiscard]] std::string Fact(const std::string& fact) const
    {
        for (const auto& [key, value] : facts)
        {
            if (key == fact)
            {
                return value;
            }
        }
        return {};
    }
};

struct Acceptance
{
    std::string when;      // text
    std::string installer; // what came of the installation without rights
    bool installerHolds = true;
    bool onServer = false; // a SQL Server
    bool whole = true;     // all scenarios, not some of them
    std::vector<BitnessOutcome> bitnesses;
};

} // namespace vellumo::acceptance
