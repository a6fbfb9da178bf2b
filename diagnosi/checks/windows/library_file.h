// Where the library of each bitness is, and which version the installer has noted.
#pragma once

#include "diagnosi/checks/windows/registered_class.h"

#include <optional>
#include <string>

namespace vellumo::diagnosi
{

// As registered; empty when it is not.
[[nodiscard]] std::optional<std::string> LibraryFile(Bitness bitness);
// Empty where no installer has been.
[[nodiscard]] std::optional<std::string> InstalledVersion();

} // namespace vellumo::diagnosi
