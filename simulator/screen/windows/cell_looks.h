// A grid's cell as it looks on the screen.
#pragma once

#include "ui/controls.h"

#include <windows.h>

namespace vellumo::screen
{

// Scrolls the row into view first. Colours are empty where they are the system's own for windows, or for selected rows.
[[nodiscard]] ui::Cell ReadCell(HWND list, int row, int column);
// Where the cell stands in the list, in pixels.
[[nodiscard]] RECT CellArea(HWND list, int row, int column);

} // namespace vellumo::screen
