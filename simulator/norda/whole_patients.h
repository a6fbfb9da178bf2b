// Whether a database that was left in the middle of an import shows whole patients only.
#pragma once

#include "simulator/norda/snapshot.h"

#include <optional>
#include <string>

namespace vellumo::norda
{

// A patient with his addresses and exemptions must be as before the call, as before but revoked, or as after the whole
// of it; every other row as before or as after. Empty when it is so, else what is not.
[[nodiscard]] std::optional<std::string> FindBrokenPatient(const Snapshot& before, const Snapshot& after,
                                                           const Snapshot& now);

} // namespace vellumo::norda
