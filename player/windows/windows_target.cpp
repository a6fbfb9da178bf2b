#include "player/windows/windows_target.h"

#include "host/fault.h"
#include "platform/windows/system/text.h"
#include "player/windows/screen_picture.h"

#include <objbase.h>

#include <array>
#include <cstdlib>

namespace vellumo::player
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

WindowsTarget::Apartment::Apartment()
{
    static_cast<void>(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
}

WindowsTarget::Apartment::~Apartment()
{
    CoUninitialize();
}

WindowsTarget::WindowsTarget(Operator& anOperator)
    : m_installation(norda::MakeRegistryInstallation())
    , m_robot(anOperator)
{
}

WindowsTarget::~WindowsTarget()
{
    if (m_refusal != nullptr)
    {
        UnhookWindowsHookEx(m_refusal);
    }
}

Window* WindowsTarget::Topmost()
{
    m_top = Robot::Topmost();
    return m_top.get();
}

void WindowsTarget::RefuseWindows()
{
    m_refusal = SetWindowsHookExW(WH_CBT, RefuseLibraryWindows, nullptr, GetCurrentThreadId());
}

bool WindowsTarget::Screenshot(const std::filesystem::path& file)
{
    return SaveScreenPicture(file);
}

int DoApart(const std::vector<std::string>& words, const std::function<void()>&)
{
    std::array<wchar_t, 32768> program{};
    GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    std::wstring line = L"\"" + std::wstring(program.data()) + L"\"";
    for (const auto& word : words)
    {
        line += L" \"" + windows::ToWide(word) + L"\"";
    }
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process) == FALSE)
    {
        throw host::Fault("a process of its own could not be made");
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(code);
}

void EndProcess(int code)
{
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
    std::abort(); // it has ended
}

} // namespace vellumo::player
