// Watches the screen for windows of the library and lets the operator at each that waits. It works on the thread that
// shows the windows, from a timer that fires in whatever modal loop runs there, so nothing crosses threads: the timer
// comes only when all messages of the action before have been dispatched and the window is drawn. One at a time.
#pragma once

#include "simulator/screen/window.h"

#include <windows.h>

#include <memory>

namespace vellumo::screen
{

class Robot
{
public:
    // `anOperator` outlives the robot.
    explicit Robot(Operator& anOperator);
    ~Robot();
    Robot(const Robot&) = delete;
    Robot& operator=(const Robot&) = delete;

    // The library's window on top of this thread's, waiting or busy; null when there is none.
    [[nodiscard]] static std::unique_ptr<Window> Topmost();

private:
    static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR timer, DWORD time) noexcept;

    Operator& m_operator;
    UINT_PTR m_timer;
    bool m_atWork = false;
};

} // namespace vellumo::screen
