#include "service/practice_user.h"

#include "host/fault.h"

#include <string>

namespace vellumo::service
{

bool IsPracticeStaff(const host::HostServices& services)
{
    const auto user = services.RequireLockSrv().UserId();
    const auto rows = services.RequireConnection().Open(std::string("SELECT IDSpecialista FROM Specialista ") +
                                                        "WHERE IDUtente = " + std::to_string(user));
    return rows->IsAtEnd();
}

bool IsPersonaleStudio(const host::HostServices& services) noexcept
{
    return host::Trap(false, [&] { return IsPracticeStaff(services); });
}

} // namespace vellumo::service
