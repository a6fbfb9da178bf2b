// What the host has handed to the provider so far. The host may set the parts in any order, replace them, or call an
// operation before it has set them all: then the first use of the missing part faults.
#pragma once

#include "host/connection.h"
#include "host/lock_srv.h"
#include "host/utils.h"

#include <cstdint>
#include <memory>

namespace vellumo::host
{

struct HostServices
{
    std::shared_ptr<Connection> connection;
    std::shared_ptr<LockSrv> lockSrv;
    std::shared_ptr<Utils> utils;
    std::int32_t studio = 0;

    [[nodiscard]] Connection& RequireConnection() const;
    [[nodiscard]] LockSrv& RequireLockSrv() const;
    [[nodiscard]] Utils& RequireUtils() const;
};

} // namespace vellumo::host
