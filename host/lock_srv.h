// The host's lock service; the library asks it only who is logged on.
#pragma once

#include <cstdint>

namespace vellumo::host
{

class LockSrv
{
public:
    virtual ~LockSrv() = default;

    // Identifier of the user logged on to the host (`IDUtente`). Faults when the host cannot tell.
    [[nodiscard]] virtual std::int32_t UserId() = 0;
};

} // namespace vellumo::host
