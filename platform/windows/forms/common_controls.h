// The common controls with visual styles, for the windows of this module only: a host that was built for the old look
// keeps it. Comes from the manifest in this module's resources; a module without one shows its windows in the old look.
#pragma once

#include <windows.h>

namespace vellumo::windows
{

// Owns the activation context. Windows made while a `Scope` lives get the new controls.
class CommonControls
{
public:
    CommonControls() noexcept;
    ~CommonControls();
    CommonControls(const CommonControls&) = delete;
    CommonControls& operator=(const CommonControls&) = delete;

    class Scope
    {
    public:
        explicit Scope(const CommonControls& controls) noexcept;
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        ULONG_PTR m_cookie = 0;
        bool m_active = false;
    };

private:
    HANDLE m_context;
};

} // namespace vellumo::windows
