// The page that the acceptance kit leaves: one file, nothing beside it, Italian.
#pragma once

#include "package/acceptance/outcome.h"

#include <string>

namespace vellumo::acceptance
{

// Whether everything that was played holds and something was.
[[nodiscard]] bool Holds(const Acceptance& acceptance);

[[nodiscard]] std::string Html(const Acceptance& acceptance);

} // namespace vellumo::acceptance
