// Short for a message to a window of this thread.
#pragma once

#include <windows.h>

namespace vellumo::windows
{

inline LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) noexcept
{
    return SendMessageW(window, message, wParam, lParam);
}

} // namespace vellumo::windows
