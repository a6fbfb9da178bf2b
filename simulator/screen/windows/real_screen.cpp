#include "simulator/screen/windows/real_screen.h"

#include "simulator/screen/windows/screen_picture.h"

namespace vellumo::screen
{
namespace
{

// Windows asks before it makes a window; the library's dialogs come from its own module, the system's boxes do not.
LRESULT CALLBACK RefuseLibraryWindows(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HCBT_CREATEWND)
    {
        const auto* const creation = reinterpret_cast<const CBT_CREATEWNDW*>(lParam);
        const HMODULE library = GetModuleHandleW(L"Vellumo.dll");
        if (library != nullptr && creation->lpcs->hInstance == library && (creation->lpcs->style & WS_CHILD) == 0)
        {
            return 1;
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace

RealScreen::~RealScreen()
{
    if (m_refusal != nullptr)
    {
        UnhookWindowsHookEx(m_refusal);
    }
}

Window* RealScreen::Topmost()
{
    m_top = Robot::Topmost();
    return m_top.get();
}

void RealScreen::RefuseWindows()
{
    m_refusal = SetWindowsHookExW(WH_CBT, RefuseLibraryWindows, nullptr, GetCurrentThreadId());
}

bool RealScreen::TakePicture(const std::filesystem::path& file)
{
    return SaveScreenPicture(file);
}

} // namespace vellumo::screen
