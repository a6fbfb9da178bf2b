// The library: registered for programs of this bitness, there, of one version with everything else, and usable.
#pragma once

#include "diagnosi/checks/finding.h"
#include "diagnosi/checks/machine.h"

namespace vellumo::diagnosi
{

[[nodiscard]] Finding CheckLibraryRegistered(const Machine& machine);
// Of the libraries of both bitnesses, of this program, and of what the installer has noted.
[[nodiscard]] Finding CheckVersions(const Machine& machine);
// Makes a provider as a host does, which also makes the bridge, and lets it go.
[[nodiscard]] Finding CheckProvider(const Machine& machine);

} // namespace vellumo::diagnosi
