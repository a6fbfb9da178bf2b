// The checks of what only this platform has, before all others. Defined by the platform.
#pragma once

#include "diagnosi/checks/checks.h"

#include <span>

namespace vellumo::diagnosi
{

[[nodiscard]] std::span<const Check> PlatformChecks();

} // namespace vellumo::diagnosi
