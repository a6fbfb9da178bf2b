#include "platform/windows/forms/common_controls.h"

#include "platform/windows/system/this_module.h"

#include <commctrl.h>

namespace vellumo::windows
{
namespace
{

HANDLE MakeContext(HINSTANCE module) noexcept
{
    ACTCTXW description{};
    description.cbSize = sizeof description;
    description.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    description.hModule = module;
    description.lpResourceName = MAKEINTRESOURCEW(2);
    return CreateActCtxW(&description);
}

} // namespace

CommonControls::CommonControls() noexcept
    : m_context(MakeContext(ThisModule()))
{
    const Scope scope(*this);
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_PROGRESS_CLASS};
    InitCommonControlsEx(&classes);
}

CommonControls::~CommonControls()
{
    if (m_context != INVALID_HANDLE_VALUE)
    {
        ReleaseActCtx(m_context);
    }
}

CommonControls::Scope::Scope(const CommonControls& controls) noexcept
    : m_active(controls.m_context != INVALID_HANDLE_VALUE && ActivateActCtx(controls.m_context, &m_cookie) != FALSE)
{
}

CommonControls::Scope::~Scope()
{
    if (m_active)
    {
        // Host code that ran meanwhile and left a context of its own active must not raise an exception here.
        DeactivateActCtx(DEACTIVATE_ACTCTX_FLAG_FORCE_EARLY_DEACTIVATION, m_cookie);
    }
}

} // namespace vellumo::windows
