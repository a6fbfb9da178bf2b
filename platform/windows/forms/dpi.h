// Dots an inch of a window. The windows are as aware of them as the host program is; what only newer systems know is
// looked up at run time, and older ones have one density for the whole screen.
#pragma once

#include <windows.h>

namespace vellumo::windows
{

[[nodiscard]] int DpiOf(HWND window) noexcept;
// GetSystemMetrics for a window of that density.
[[nodiscard]] int MetricFor(int metric, int dpi) noexcept;
// The window's whole size with that inner one, at that density.
[[nodiscard]] SIZE SizeWithFrame(HWND window, SIZE inner, int dpi) noexcept;
// Where the host is aware of each screen, the system would scale a dialog and its controls by itself, and again what
// the window has scaled already.
void LeaveScalingToWindow(HWND dialog) noexcept;

} // namespace vellumo::windows
