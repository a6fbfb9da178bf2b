// The host program's folder and what the library reads and writes below it.
#pragma once

#include "diagnosi/checks/finding.h"
#include "diagnosi/checks/machine.h"

namespace vellumo::diagnosi
{

[[nodiscard]] Finding CheckHostFolder(const Machine& machine);
// Written to, as the user who runs this, and cleaned up again.
[[nodiscard]] Finding CheckLogFolder(const Machine& machine);
[[nodiscard]] Finding CheckTraceFolder(const Machine& machine);

} // namespace vellumo::diagnosi
