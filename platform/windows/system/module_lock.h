// Whether anything of this module is still in use, so that the system may not unload it.
#pragma once

namespace vellumo::windows
{

// Keeps the module loaded as long as it lives. Every COM object has one; so has a host that locked the server.
class ModuleLock
{
public:
    ModuleLock() noexcept;
    ~ModuleLock();
    ModuleLock(const ModuleLock&) = delete;
    ModuleLock& operator=(const ModuleLock&) = delete;
};

// For IClassFactory::LockServer, whose locks have no owner.
void LockModule(bool lock) noexcept;
[[nodiscard]] bool IsModuleInUse() noexcept;

} // namespace vellumo::windows
