// Who is logged on to the host: a doctor, who has a row in `Specialista`, or practice staff, who has none.
#pragma once

#include "host/host_services.h"

namespace vellumo::service
{

// Faults when the host or its database does.
[[nodiscard]] bool IsPracticeStaff(const host::HostServices& services);

// The same for callers that go on as for a doctor when it cannot be found out.
[[nodiscard]] bool IsPersonaleStudio(const host::HostServices& services) noexcept;

} // namespace vellumo::service
