// The few things that the simulated host needs from the platform and that differ between Windows and the rest.
#pragma once

#include <filesystem>
#include <string>

namespace vellumo::norda
{

// Folder of the running program; the request templates lie near it.
[[nodiscard]] std::filesystem::path ProgramFolder();

// How the SQLite driver wants to be told of a file. It may see the file system with other eyes than the program: under
// Wine the driver is one of the system below.
[[nodiscard]] std::string DriverPath(const std::filesystem::path& file);

} // namespace vellumo::norda
