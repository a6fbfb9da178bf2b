#include "player/scenario.h"

#include "player/run.h"
#include "player/written.h"

#include <algorithm>

namespace vellumo::player
{
namespace
{

// What a whole line must have once all that belongs to it is known.
void CheckComplete(const Node& node)
{
    const auto has = [&](std::string_view keyword) { return FindLine(node.below, keyword) != nullptr; };
    const auto fail = [&](const std::string& what) { throw SyntaxError(node.place, what); };
    if (node.Keyword() == "call" && !has("returns") && !has("faults"))
    {
        fail("the call needs a line \"returns\" or \"faults\" below it");
    }
    if (node.Keyword() == "call" && node.behind.starts_with("IdentificaPaziente") && has("returns") &&
        !has("gestito") && !FindLine(node.below, "returns")->Has("anything"))
    {
        fail("the call needs a line \"gestito\" below it");
    }
    if (node.Keyword() == "query" && !has("row") && !has("no"))
    {
        fail("the query needs lines \"row\", or \"no rows\", below it");
    }
}

bool Holds(const Node& node, std::string_view keyword)
{
    const auto own = node.Keyword();
    return own == keyword || (keyword == "window" && (own == "box" || own == "dialog" || own == "watch"));
}

// Puts a line below the one that it belongs to: the last one above that can have it. `open` are the line above and
// those that it belongs to.
void Add(Node node, std::vector<Node>& top, std::vector<Node*>& open)
{
    const auto below = node.statement->below;
    while (!open.empty() && (below.empty() || !Holds(*open.back(), below)))
    {
        open.pop_back();
    }
    if (open.empty() && !below.empty())
    {
        throw SyntaxError(node.place, "this line belongs below " + std::string(below));
    }
    open.push_back(&(open.empty() ? top : open.back()->below).emplace_back(std::move(node)));
}

} // namespace

bool Scenario::IsFor(const std::string& target) const
{
    const auto* const only = Find("only");
    return only == nullptr || only->Has(target);
}

std::vector<Scenario> ReadScenarios(const std::filesystem::path& file)
{
    return ReadScenarios(file.string(), FileText(file));
}

std::vector<Scenario> ReadScenarios(const std::string& file, const std::string& text)
{
    std::vector<Node> common;
    std::vector<Scenario> scenarios;
    std::vector<Node*> open;
    for (const auto& line : ReadLines(file, text))
    {
        auto node = ReadNode(line);
        if (node.Keyword() == "scenario")
        {
            scenarios.push_back({node.place, node.behind, common, common.size()});
            open.clear();
            continue;
        }
        Add(std::move(node), scenarios.empty() ? common : scenarios.back().nodes, open);
    }
    if (scenarios.empty())
    {
        throw SyntaxError({file, 1}, "the file has no scenario");
    }
    for (const auto& scenario : scenarios)
    {
        std::for_each(scenario.nodes.begin(), scenario.nodes.end(), CheckComplete);
    }
    return scenarios;
}

const Group scenarioStatements = {
    "file",
    Role::Step,
    {
        {"", "scenario TITLE…", "begins a scenario", nothing},
        {"", "only on native/win64/win32 [native/win64/win32 [native/win64/win32]]",
         "the targets on which the scenario is played", nothing},
        {"", "sweep database faults",
         "the scenario is played again and again, the library's first, second, third … statement failing, until "
         "none is left: after each time the database, but for the host's journal, must be as before or as after "
         "the whole, nothing between. Lines that look at what is so after the calls are left out then",
         nothing},
        {"", "sweep whole patients",
         "the same for an import of many: each patient must be as before, as before but revoked, or as after the "
         "whole. Natively the program also ends before each statement, in a process of its own",
         nothing},
        {"", "sweep ended programs",
         "the scenario is played again and again in a process of its own, which ends at the library's first statement "
         "after each reply of SISS. Then the program is started again, and each code that SISS gave must be in the row "
         "where the whole scenario leaves it, or in the host's journal",
         nothing},
        {"", "tell TEXT…", "says it to whoever listens with `--tell`",
         [](Run& run, const Node& node) { run.Tell(node.Text("TEXT")); }},
    }};

} // namespace vellumo::player
