#include "tests/bench/windows/library_run.h"

#include "platform/windows/adapters/host_fault.h"
#include "simulator/norda/host_utils.h"
#include "simulator/norda/windows/com_provider.h"
#include "simulator/norda/windows/faces.h"

#include <commctrl.h>

#include <array>
#include <chrono>
#include <cwchar>

namespace vellumo::bench
{
namespace
{

using windows::ComPtr;

constexpr int fileName = 0x47C; // of the system's file dialog, a list with a text box in it

struct Screen
{
    std::wstring file;
    double chosen = 0;
    double told = 0;
};
Screen screen; // of the one run that there is; hooks have no other way to it

double Now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

bool IsDialog(HWND window)
{
    std::array<wchar_t, 16> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return std::wcscmp(name.data(), L"#32770") == 0 && (GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) == 0;
}

// The library's own windows close themselves; a box has a button to confirm.
LRESULT CALLBACK Answer(int code, WPARAM wParam, LPARAM lParam) noexcept
{
    const auto& message = *reinterpret_cast<const CWPRETSTRUCT*>(lParam);
    if (code == HC_ACTION && message.message == WM_SHOWWINDOW && message.wParam != FALSE && IsDialog(message.hwnd))
    {
        if (GetDlgItem(message.hwnd, fileName) != nullptr)
        {
            const auto box =
                reinterpret_cast<HWND>(SendDlgItemMessageW(message.hwnd, fileName, CBEM_GETEDITCONTROL, 0, 0));
            SetWindowTextW(box, screen.file.c_str());
            PostMessageW(message.hwnd, WM_COMMAND, IDOK, 0);
        }
        else if (GetDlgItem(message.hwnd, IDOK) != nullptr || GetDlgItem(message.hwnd, IDCANCEL) != nullptr)
        {
            screen.told = Now();
            PostMessageW(message.hwnd, WM_CLOSE, 0, 0);
        }
    }
    if (code == HC_ACTION && message.message == WM_DESTROY && GetDlgItem(message.hwnd, fileName) != nullptr)
    {
        screen.chosen = Now();
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

BOOL CALLBACK FindDialog(HWND window, LPARAM found) noexcept
{
    if (!IsDialog(window) || IsWindowVisible(window) == FALSE)
    {
        return TRUE;
    }
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

} // namespace

std::string LibraryRun::Bridge::CallSebMethod(const std::string&)
{
    if (called)
    {
        called();
    }
    return reply;
}

LibraryRun::LibraryRun(const std::filesystem::path& folder)
    : m_practice(folder)
    , m_hook(SetWindowsHookExW(WH_CALLWNDPROCRET, &Answer, nullptr, GetCurrentThreadId()))
{
    m_practice.Create();
    m_practice.Register(*norda::MakeRegistryInstallation());
    m_database = m_practice.Open();
    for (const auto* const name : {"main", "Norda"})
    {
        m_database->Execute(std::string("PRAGMA ") + name + ".synchronous = OFF");
    }
    m_client = norda::CreateComProvider({&m_bridge, &m_objects, &m_prescriptions});
    const auto utils = std::make_shared<norda::HostUtils>(m_database);
    const auto lockSrv = std::make_shared<norda::HostLockSrv>(1);
    m_client->SetConnection(m_database);
    m_client->SetUtils(utils);
    m_client->SetLockSrv(lockSrv);
    m_client->SetStudio(norda::Practice::studio);
    m_roots = {norda::MakeConnectionFace(m_database), norda::MakeUtilsFace(utils), norda::MakeLockSrvFace(lockSrv),
               norda::MakeBridgeFace(m_bridge)};
    windows::ThrowIfFailed(CLSIDFromProgID(L"Vellumo.SISSProvider", &m_class), "Vellumo.SISSProvider");
}

LibraryRun::~LibraryRun()
{
    m_roots.clear();
    static_cast<void>(m_client->Release());
    UnhookWindowsHookEx(m_hook);
}

void LibraryRun::CreateAndRelease() const
{
    ComPtr<IUnknown> provider;
    windows::ThrowIfFailed(CoCreateInstance(m_class, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, provider.PutVoid()),
                           "SISSProvider");
}

void LibraryRun::Choose(const std::filesystem::path& file)
{
    screen.file = file.wstring();
}

double LibraryRun::Chosen() const noexcept
{
    return screen.chosen;
}

double LibraryRun::Told() const noexcept
{
    return screen.told;
}

HWND LibraryRun::Window()
{
    HWND found = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), &FindDialog, reinterpret_cast<LPARAM>(&found));
    return found;
}

} // namespace vellumo::bench
