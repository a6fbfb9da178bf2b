#include "platform/windows/forms/modal.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace vellumo::windows
{
namespace
{

bool CanBeWorkedWith(HWND window) noexcept
{
    return IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE;
}

BOOL CALLBACK TakeTopmost(HWND window, LPARAM topmost) noexcept
{
    if (!CanBeWorkedWith(window))
    {
        return TRUE;
    }
    *reinterpret_cast<HWND*>(topmost) = window;
    return FALSE;
}

struct Windows
{
    std::vector<HWND> found;
    std::exception_ptr fault;
};

// Windows calls here: nothing may escape.
BOOL CALLBACK AddWorkingWindow(HWND window, LPARAM windows) noexcept
{
    auto& [found, fault] = *reinterpret_cast<Windows*>(windows);
    try
    {
        if (CanBeWorkedWith(window))
        {
            found.push_back(window);
        }
        return TRUE;
    }
    catch (...)
    {
        fault = std::current_exception();
        return FALSE;
    }
}

// The thread's windows that the operator can work with.
std::vector<HWND> WorkingWindows()
{
    Windows windows;
    EnumThreadWindows(GetCurrentThreadId(), &AddWorkingWindow, reinterpret_cast<LPARAM>(&windows));
    if (windows.fault)
    {
        std::rethrow_exception(windows.fault);
    }
    return std::move(windows.found);
}

} // namespace

HWND ModalOwner() noexcept
{
    if (const HWND active = GetActiveWindow(); active != nullptr && IsWindowVisible(active) != FALSE)
    {
        return active;
    }
    HWND topmost = nullptr; // it comes first
    EnumThreadWindows(GetCurrentThreadId(), &TakeTopmost, reinterpret_cast<LPARAM>(&topmost));
    return topmost;
}

// Nothing can fail once the first is disabled: the destructor of a half-made object would not run.
OthersDisabled::OthersDisabled(HWND owner)
    : m_disabled(WorkingWindows())
{
    m_disabled.erase(std::remove(m_disabled.begin(), m_disabled.end(), owner), m_disabled.end());
    for (const HWND window : m_disabled)
    {
        EnableWindow(window, FALSE);
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
