#include "host/host_services.h"

#include "host/fault.h"

#include <string>

namespace vellumo::host
{
namespace
{

template <class Part>
Part& Require(const std::shared_ptr<Part>& part, const char* name)
{
    if (!part)
    {
        throw Fault(std::string("La proprietà ") + name + " non è stata impostata.");
    }
    return *part;
}

} // namespace

Connection& HostServices::RequireConnection() const
{
    return Require(connection, "Connection");
}
LockSrv& HostServices::RequireLockSrv() const
{
    return Require(lockSrv, "LockSrv");
}
Utils& HostServices::RequireUtils() const
{
    return Require(utils, "Utils");
}

} // namespace vellumo::host
