// The SISS client's installation: its folders, the bridge's configuration, and the regional tables that it leaves.
#pragma once

#include "diagnosi/checks/finding.h"
#include "diagnosi/checks/machine.h"

namespace vellumo::diagnosi
{

[[nodiscard]] Finding CheckClientFolders(const Machine& machine);
[[nodiscard]] Finding CheckClientConfiguration(const Machine& machine);
// The master index, its date, and each table that it names.
[[nodiscard]] Finding CheckRegionalTables(const Machine& machine);

} // namespace vellumo::diagnosi
