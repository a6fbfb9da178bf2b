// The installer, started by somebody who may not install: it must refuse, say so by its exit code, and leave nothing.
#pragma once

#include <filesystem>
#include <string>
#include <utility>

namespace vellumo::acceptance
{

// What came of it, in Italian, and whether it is what is promised. The program that calls this has the rights of an
// administrator; the installer runs without them.
[[nodiscard]] std::pair<std::string, bool> TryInstallerWithoutRights(const std::filesystem::path& setup);

} // namespace vellumo::acceptance
