// What a DLL or program says of itself without being loaded.
#pragma once

#include <optional>
#include <string>

namespace vellumo::diagnosi
{

enum class ProgramKind
{
    NotThere,
    NoProgram, // not a file of code
    Loads,     // into programs of this bitness
    OtherBitness
};

[[nodiscard]] ProgramKind KindOf(const std::string& path);

// "1.2.3.456"; empty where the file says none.
[[nodiscard]] std::optional<std::string> FileVersion(const std::string& path);

} // namespace vellumo::diagnosi
