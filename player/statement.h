// The statements of scenario files, as tables: how each is written, what it means, what it does. These tables drive
// the reading of files and the tables of docs/scenarios.md.
//
// How a wording is to be read:
//   word          stands as it is
//   a/b           one of these words
//   NAME, 'NAME'  in capitals: a word, or a text in double quotes; QUOTED takes it only in quotes
//   N             a single letter: a whole number
//   NAME…         all that is left of the line
//   <group>       one of the statements of that group
//   [ … ]         may be left out
#pragma once

#include "player/line.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::player
{

class Run;
struct Node;

struct Statement
{
    // Keyword of the line that this one belongs to; "" for one that stands alone, "window" also for boxes and dialogs.
    std::string_view below;
    std::string_view wording;
    std::string_view meaning; // for docs/scenarios.md; "" when the statement before it tells
    // Does what the statement says; throws Differs when something is not as it says.
    void (*perform)(Run& run, const Node& node);
    // Of what the operator does: how that is told in Italian; "*NAME" stands for what is written for that name.
    std::string_view told = {};

    [[nodiscard]] std::string_view Keyword() const { return wording.substr(0, wording.find(' ')); }
};

// Performed by a line that another one looks at.
inline constexpr auto nothing = [](Run&, const Node&) {};

enum class Role
{
    Step,
    Check, // looks at what is so after the calls; left out when a call was made to fail
    Part   // stands inside a line
};

struct Group
{
    std::string_view name;
    Role role;
    std::vector<Statement> statements;
};

// One line as it was read: its statement, what stands for each name of the wording, and the lines that belong to it.
struct Node
{
    const Group* group = nullptr;
    const Statement* statement = nullptr;
    Place place;
    std::string behind; // what is written behind the keyword
    std::vector<std::string> block;
    std::map<std::string, std::string> values;
    std::string choice;      // the one of several words that was written
    std::vector<Node> parts; // for each <group> of the wording
    std::vector<Node> below;

    [[nodiscard]] std::string_view Keyword() const { return statement->Keyword(); }
    // Whether this name, or this word of a choice or an optional part, was written.
    [[nodiscard]] bool Has(const std::string& name) const { return values.count(name) != 0; }
    // "" when it was left out.
    [[nodiscard]] std::string Text(const std::string& name) const;
    // Empty where it says that it is missing.
    [[nodiscard]] std::optional<std::string> TextUnlessMissing(const std::string& name) const
    {
        return Has("missing") ? std::nullopt : std::optional(Text(name));
    }
    [[nodiscard]] std::int32_t Number(const std::string& name) const { return std::stoi(Text(name)); }
    [[nodiscard]] std::size_t Count(const std::string& name) const;
    // The texts between "|".
    [[nodiscard]] std::vector<std::string> Cells() const { return CellsOf(place, Text("CELLS")); }
    void Perform(Run& run) const { statement->perform(run, *this); }
};

// The first with that keyword; null when there is none.
[[nodiscard]] const Node* FindLine(const std::vector<Node>& lines, std::string_view keyword);
// All tables.
[[nodiscard]] const std::vector<const Group*>& Groups();
// Reads a line by its keyword; a SyntaxError tells what was expected.
[[nodiscard]] Node ReadNode(const Line& line);
// The document with its tables of statements, each behind a line "<!-- statements: NAME -->", written anew.
[[nodiscard]] std::string WithStatementTables(const std::string& document);

extern const Group scenarioStatements;
extern const Group practiceStatements;
extern const Group sissStatements;
extern const Group callNumberStatements;
extern const Group replyStatements;
extern const Group entryStatements;
extern const Group callStatements;
extern const Group operationStatements;
extern const Group argumentStatements;
extern const Group kindStatements;
extern const Group lookStatements;
extern const Group actionStatements;
extern const Group checkStatements;

} // namespace vellumo::player
