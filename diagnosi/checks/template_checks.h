// The request templates of the practice, held against those that this version delivers: the library fills each element
// of those, and what a template lacks is silently not sent.
#pragma once

#include "diagnosi/checks/finding.h"
#include "diagnosi/checks/machine.h"

namespace vellumo::diagnosi
{

[[nodiscard]] Finding CheckTemplates(const Machine& machine);

} // namespace vellumo::diagnosi
