// What the library left in SISS\Tracce for somebody to act on.
#pragma once

#include "diagnosi/checks/finding.h"
#include "diagnosi/checks/machine.h"

namespace vellumo::diagnosi
{

// Codes of SISS that no open program keeps any more and nobody has stored, and the lines of the last week that ask
// somebody to act.
[[nodiscard]] Finding CheckTraces(const Machine& machine);

} // namespace vellumo::diagnosi
