// The look that the operator has chosen for the whole system. Colours of our own are made for dark text on a light
// ground; everywhere else only the system's are used, and what a colour says is said by the text as well.
#pragma once

#include <windows.h>

namespace vellumo::windows
{

// Not in a contrast scheme, nor with light text on a dark ground.
[[nodiscard]] bool OwnColoursFit() noexcept;
// Of the lines between cells; stands out from the ground in every scheme.
[[nodiscard]] COLORREF GridLineColour() noexcept;

} // namespace vellumo::windows
