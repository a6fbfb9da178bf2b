// One task of the program as its command line has it: a row of the table in commands.cpp.
#pragma once

#include "diagnosi/checks/machine.h"
#include "diagnosi/program/arguments.h"
#include "diagnosi/program/exit_code.h"

#include <iosfwd>
#include <span>
#include <string>
#include <string_view>

namespace vellumo::diagnosi
{

struct Task
{
    Machine& machine;
    const Arguments& arguments;
    std::ostream& out; // UTF-8, lines end in "\n"
};

struct Command
{
    std::string_view name;     // "controlla"
    std::string_view operands; // "[CARTELLA]"; "" for none
    std::size_t mostOperands;
    std::string_view purpose; // a sentence, Italian
    std::span<const Option> options;
    // A fault is told and ends the program with NotDone.
    ExitCode (*run)(const Task& task);
};

[[nodiscard]] std::span<const Command> Commands();

// The program's command line without its own name. Writes the answer, or why there is none, to `out`.
[[nodiscard]] ExitCode Run(std::span<const std::string> words, Machine& machine, std::ostream& out);

// The same text with the line ends of Windows.
[[nodiscard]] std::string WithWindowsLines(std::string_view text);

} // namespace vellumo::diagnosi
