// A control of a window on the screen, read from Windows, with no knowledge of the form behind it.
#pragma once

#include "player/screen.h"

#include <windows.h>

#include <optional>
#include <string>

namespace vellumo::player
{

[[nodiscard]] bool HasClass(HWND window, const wchar_t* name);
[[nodiscard]] std::string TextOf(HWND window);
// Its own state, whether or not its window is on the screen.
[[nodiscard]] bool IsShown(HWND window);
// Whether the operator could press it or fill it in.
[[nodiscard]] bool TakesInput(HWND window);
[[nodiscard]] bool IsIcon(HWND window);
// Empty when it is hidden, or none that the operator would name.
[[nodiscard]] std::optional<ControlSeen> ReadControl(HWND window);

} // namespace vellumo::player
