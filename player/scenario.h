// A scenario file as it was read. docs/scenarios.md describes the language.
#pragma once

#include "player/statement.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::player
{

struct Scenario
{
    Place place;
    std::string title;
    std::vector<Node> nodes; // those that the file's scenarios have in common, then its own
    std::size_t common = 0;  // how many of them are in common

    // The first line with this keyword; null when there is none.
    [[nodiscard]] const Node* Find(std::string_view keyword) const { return FindLine(nodes, keyword); }
    // Whether it is to be played on this target.
    [[nodiscard]] bool IsFor(const std::string& target) const;
};

// Throws SyntaxError, and Differs when the file cannot be read.
[[nodiscard]] std::vector<Scenario> ReadScenarios(const std::filesystem::path& file);
// The same of a text; the file's name is for messages.
[[nodiscard]] std::vector<Scenario> ReadScenarios(const std::string& file, const std::string& text);

} // namespace vellumo::player
