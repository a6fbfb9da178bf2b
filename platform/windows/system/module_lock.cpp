#include "platform/windows/system/module_lock.h"

#include <atomic>

namespace vellumo::windows
{
namespace
{

std::atomic<long> locks = 0;
std::atomic<long> serverLocks = 0;

} // namespace

ModuleLock::ModuleLock() noexcept
{
    ++locks;
}

ModuleLock::~ModuleLock()
{
    --locks;
}

void LockModule(bool lock) noexcept
{
    // Letting go more often than holding must not unload the DLL under living objects.
    if (lock || serverLocks > 0)
    {
        serverLocks += lock ? 1 : -1;
    }
}

bool IsModuleInUse() noexcept
{
    return locks != 0 || serverLocks != 0;
}

} // namespace vellumo::windows
