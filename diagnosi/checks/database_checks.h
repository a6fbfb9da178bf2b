// The host's database against what the library reads and writes (host/database_contract.h). Without a connection string
// nothing is looked at, and the check says how to do it.
#pragma once

#include "diagnosi/checks/finding.h"
#include "diagnosi/checks/machine.h"

namespace vellumo::diagnosi
{

[[nodiscard]] Finding CheckDatabase(const Machine& machine);

} // namespace vellumo::diagnosi
