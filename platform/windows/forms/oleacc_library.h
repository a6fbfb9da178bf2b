// The system's library for screen readers, loaded when the first of them asks.
#pragma once

#include "platform/windows/system/com_ptr.h"

#include <windows.h>
// After windows.h.
#include <oleacc.h>

namespace vellumo::windows
{

// The answer to WM_GETOBJECT that hands out an object; 0 when it cannot.
[[nodiscard]] LRESULT AnswerWith(IAccessible& object, WPARAM wParam) noexcept;
// The system's own description of a window or its client area; empty when there is none.
[[nodiscard]] ComPtr<IAccessible> StandardAccessible(HWND window, LONG objectId) noexcept;

} // namespace vellumo::windows
