// The classes that the library creates: the SISS client's bridge and the host's own, with each of their members, under
// the names that the library uses for them (platform/windows/adapters/host_contract.h, Vellumo.names.txt).
#pragma once

#include "diagnosi/checks/finding.h"
#include "diagnosi/checks/machine.h"

namespace vellumo::diagnosi
{

[[nodiscard]] Finding CheckNames(const Machine& machine);
// As registered, without creating it.
[[nodiscard]] Finding CheckBridge(const Machine& machine);
// Creates each of them and asks for its members by name; nothing is called.
[[nodiscard]] Finding CheckHostClasses(const Machine& machine);

} // namespace vellumo::diagnosi
