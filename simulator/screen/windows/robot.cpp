#include "simulator/screen/windows/robot.h"

#include "simulator/screen/windows/real_window.h"

namespace vellumo::screen
{
namespace
{

constexpr UINT interval = 10; // milliseconds, the shortest that Windows knows

Robot* theRobot = nullptr; // a timer's callback is told nothing

HWND TopLibraryWindow()
{
    HWND window = GetTopWindow(nullptr);
    while (window != nullptr &&
           !(GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId() && RealWindow::IsLibraryWindow(window)))
    {
        window = GetWindow(window, GW_HWNDNEXT);
    }
    return window;
}

} // namespace

Robot::Robot(Operator& anOperator)
    : m_operator(anOperator)
    , m_timer(SetTimer(nullptr, 0, interval, &Robot::OnTimer))
{
    theRobot = this;
    SetCursorPos(0, 0); // out of the way: what the mouse points at looks different
}

Robot::~Robot()
{
    KillTimer(nullptr, m_timer);
    theRobot = nullptr;
}

std::unique_ptr<Window> Robot::Topmost()
{
    const HWND top = TopLibraryWindow();
    return top == nullptr ? nullptr : std::make_unique<RealWindow>(top);
}

void CALLBACK Robot::OnTimer(HWND, UINT, UINT_PTR, DWORD) noexcept
{
    if (theRobot == nullptr || theRobot->m_atWork)
    {
        return;
    }
    const HWND top = TopLibraryWindow();
    if (top == nullptr)
    {
        return;
    }
    RealWindow window(top);
    if (window.IsWaiting())
    {
        theRobot->m_atWork = true;
        theRobot->m_operator.OnScreen(window);
        theRobot->m_atWork = false;
    }
    else if (!window.All<ui::ProgressBar>().empty())
    {
        theRobot->m_operator.OnBusy(window);
    }
}

} // namespace vellumo::screen
