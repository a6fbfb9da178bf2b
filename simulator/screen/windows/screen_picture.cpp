#include "simulator/screen/windows/screen_picture.h"

#include <windows.h>
// After windows.h, and this before gdiplus.h.
#include <propidl.h>
// Last.
#include <gdiplus.h>

namespace vellumo::screen
{
namespace
{

// Empty when this process shows nothing.
RECT AroundOwnWindows()
{
    constexpr int margin = 12; // pixels
    RECT around{};
    for (HWND window = GetTopWindow(nullptr); window != nullptr; window = GetWindow(window, GW_HWNDNEXT))
    {
        DWORD process = 0;
        RECT place{};
        GetWindowThreadProcessId(window, &process);
        if (process == GetCurrentProcessId() && IsWindowVisible(window) != FALSE &&
            GetWindowRect(window, &place) != FALSE)
        {
            UnionRect(&around, &around, &place);
        }
    }
    if (IsRectEmpty(&around) == FALSE)
    {
        const RECT screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
        InflateRect(&around, margin, margin);
        IntersectRect(&around, &around, &screen);
    }
    return around;
}

// Brings to the screen what this thread's windows have drawn so far, by a look for a message that nobody sends, and
// gives the desktop the time to paint over windows that have just gone.
void LetScreenSettle()
{
    constexpr UINT never = 0xBFFF;
    constexpr DWORD pause = 50; // milliseconds
    MSG message;
    PeekMessageW(&message, nullptr, never, never, PM_NOREMOVE);
    Sleep(pause);
}

// Until the process ends.
bool StartDrawing()
{
    const Gdiplus::GdiplusStartupInput input;
    ULONG_PTR session = 0;
    return Gdiplus::GdiplusStartup(&session, &input, nullptr) == Gdiplus::Ok;
}

} // namespace

bool SaveScreenPicture(const std::filesystem::path& file)
{
    static const bool canDraw = StartDrawing();
    const RECT area = AroundOwnWindows();
    if (!canDraw || IsRectEmpty(&area) != FALSE)
    {
        return false;
    }
    LetScreenSettle();
    // The screen as it is: what covers what, frames, everything.
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    Gdiplus::Bitmap picture(width, height, PixelFormat24bppRGB);
    Gdiplus::Graphics graphics(&picture);
    const HDC screen = GetDC(nullptr);
    const HDC copy = graphics.GetHDC();
    const BOOL copied = BitBlt(copy, 0, 0, width, height, screen, area.left, area.top, SRCCOPY | CAPTUREBLT);
    graphics.ReleaseHDC(copy);
    ReleaseDC(nullptr, screen);
    constexpr CLSID png = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
    return copied != FALSE && picture.Save(file.c_str(), &png, nullptr) == Gdiplus::Ok;
}

} // namespace vellumo::screen
