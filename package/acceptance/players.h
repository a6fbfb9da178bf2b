// The scenario players of both bitnesses, run as programs of their own: a crash or a scenario that never ends costs one
// file of scenarios and not the whole run.
#pragma once

#include "package/acceptance/outcome.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace vellumo::acceptance
{

class Player
{
public:
    // `database`: connection string of a SQL Server, "" for SQLite.
    Player(std::filesystem::path program, std::string database);

    // Name and value, as the player tells them; faults with its text when it cannot.
    [[nodiscard]] std::vector<std::pair<std::string, std::string>> Facts() const;
    [[nodiscard]] FileOutcome Play(const std::filesystem::path& file) const;

private:
    struct Ended
    {
        unsigned long code = 0;
        bool inTime = true;
        std::string output;
    };
    [[nodiscard]] Ended Run(const std::vector<std::string>& words) const;

    std::filesystem::path m_program;
    std::string m_database;
};

} // namespace vellumo::acceptance
