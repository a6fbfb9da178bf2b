#include "platform/windows/modal.h"

namespace vellumo::windows
{
namespace
{

bool CanBeWorkedWith(HWND window) noexcept
{
    return IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE;
}

BOOL CALLBACK AddWorkingWindow(HWND window, LPARAM windows) noexcept
{
    if (CanBeWorkedWith(window))
    {
        reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    }
    return TRUE;
}

// The thread's windows that the operator can work with, topmost first.
std::vector<HWND> WorkingWindows()
{
    std::vector<HWND> windows;
    EnumThreadWindows(GetCurrentThreadId(), &AddWorkingWindow, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

} // namespace

HWND ModalOwner() noexcept
{
    if (const HWND active = GetActiveWindow(); active != nullptr && IsWindowVisible(active) != FALSE)
    {
        return active;
    }
    const std::vector<HWND> windows = WorkingWindows();
    return windows.empty() ? nullptr : windows.front();
}

OthersDisabled::OthersDisabled(HWND owner)
{
    for (const HWND window : WorkingWindows())
    {
        if (window != owner)
        {
            m_disabled.push_back(window);
            EnableWindow(window, FALSE);
        }
    }
}

OthersDisabled::~OthersDisabled()
{
    for (const HWND window : m_disabled)
    {
        if (IsWindow(window) != FALSE)
        {
            EnableWindow(window, TRUE);
        }
    }
}

} // namespace vellumo::windows
