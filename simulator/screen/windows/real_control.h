// A control of a window on the screen, read from Windows, with no knowledge of the form behind it.
#pragma once

#include "ui/controls.h"

#include <windows.h>

#include <memory>
#include <string>

namespace vellumo::screen
{

[[nodiscard]] bool HasClass(HWND window, const wchar_t* name);
[[nodiscard]] std::string TextOf(HWND window);
// Whether the operator could press it or fill it in.
[[nodiscard]] bool TakesInput(HWND window);
// Of a box: null for what is no icon.
[[nodiscard]] HICON IconOf(HWND window);
// The button of a box, which has the system's own identifier: "Yes", "No" …, whatever it reads. Null for any other.
[[nodiscard]] const char* AnswerOf(HWND button);
// What it says as a control of our own, rows of a grid without their cells. Null when it is hidden, or none that the
// operator would name.
[[nodiscard]] std::unique_ptr<ui::Control> ReadControl(HWND window);

} // namespace vellumo::screen
