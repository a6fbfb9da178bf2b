#include "diagnosi/checks/platform_checks.h"

namespace vellumo::diagnosi
{

// Nothing is registered here.
std::span<const Check> PlatformChecks()
{
    return {};
}

} // namespace vellumo::diagnosi
