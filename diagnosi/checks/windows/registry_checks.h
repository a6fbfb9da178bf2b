// What 32-bit and 64-bit programs see differently, and what Windows redirects.
#pragma once

#include "diagnosi/checks/finding.h"
#include "diagnosi/checks/machine.h"

namespace vellumo::diagnosi
{

// The key in which the library tells the SISS client who the host is.
[[nodiscard]] Finding CheckIdentityKey(const Machine& machine);
// Windows lets old programs believe that they have written where they may not.
[[nodiscard]] Finding CheckRedirected(const Machine& machine);

} // namespace vellumo::diagnosi
