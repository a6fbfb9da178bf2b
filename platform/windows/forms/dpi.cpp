#include "platform/windows/forms/dpi.h"

namespace vellumo::windows
{
namespace
{

// Of the system's window functions; null where the system does not have it.
template <class Function>
Function LookUp(const char* name) noexcept
{
    const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32.dll"), name);
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(found));
}

int DpiOfScreen() noexcept
{
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dpi;
}

} // namespace

int DpiOf(HWND window) noexcept
{
    static const auto dpiForWindow = LookUp<UINT(WINAPI*)(HWND)>("GetDpiForWindow");
    const UINT dpi = dpiForWindow != nullptr ? dpiForWindow(window) : 0;
    return dpi != 0 ? static_cast<int>(dpi) : DpiOfScreen();
}

int MetricFor(int metric, int dpi) noexcept
{
    static const auto metricForDpi = LookUp<int(WINAPI*)(int, UINT)>("GetSystemMetricsForDpi");
    return metricForDpi != nullptr ? metricForDpi(metric, static_cast<UINT>(dpi)) : GetSystemMetrics(metric);
}

SIZE SizeWithFrame(HWND window, SIZE inner, int dpi) noexcept
{
    static const auto adjustForDpi = LookUp<BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT)>("AdjustWindowRectExForDpi");
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
    const auto extendedStyle = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE));
    RECT frame{0, 0, inner.cx, inner.cy};
    if (adjustForDpi != nullptr)
    {
        adjustForDpi(&frame, style, FALSE, extendedStyle, static_cast<UINT>(dpi));
    }
    else
    {
        AdjustWindowRectEx(&frame, style, FALSE, extendedStyle);
    }
    return {frame.right - frame.left, frame.bottom - frame.top};
}

void LeaveScalingToWindow(HWND dialog) noexcept
{
    constexpr int disableAll = 7; // the whole of DIALOG_DPI_CHANGE_BEHAVIORS
    static const auto setBehaviour = LookUp<BOOL(WINAPI*)(HWND, int, int)>("SetDialogDpiChangeBehavior");
    if (setBehaviour != nullptr)
    {
        setBehaviour(dialog, disableAll, disableAll);
    }
}

} // namespace vellumo::windows
