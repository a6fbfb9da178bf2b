// The commands of the console, as tables: how each is written, what it is for, what it does.
//
// How the arguments of a command are to be read:
//   word       stands as it is
//   NAME       a word, in capitals
//   #NAME      a number
//   …|…        either of them
//   NAME…      all that is left of the line
//   [ ]        may be left out
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::norda
{

class Desk;

// What was written for each of the arguments, in their order; "" for one that was left out.
using Given = std::vector<std::string>;

struct Command
{
    std::string_view name; // several may share one; the first whose arguments fit counts
    std::string_view arguments;
    std::string_view help; // Italian
    // Faults with an Italian text for the person at the console.
    void (*run)(Desk& desk, const Given& given);
};

// Empty when the arguments, which stand behind the name, are not those of the command.
[[nodiscard]] std::optional<Given> Fit(const Command& command, const std::string& behind);

using Commands = std::vector<Command>;
extern const Commands practiceCommands;
extern const Commands callCommands;
extern const Commands sissCommands;

} // namespace vellumo::norda
