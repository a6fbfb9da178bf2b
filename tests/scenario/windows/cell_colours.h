// The colours of a grid's cell, read from the screen.
#pragma once

#include "ui/controls.h"

#include <windows.h>

#include <optional>

namespace vellumo::scenario
{

// Empty where they are the system's own for windows, or for selected rows.
struct CellColours
{
    std::optional<ui::Colour> foreground;
    std::optional<ui::Colour> background;
};

// Scrolls the row into view first.
[[nodiscard]] CellColours ReadCellColours(HWND list, int row, int column);
// Where the cell stands in the list, in pixels.
[[nodiscard]] RECT CellArea(HWND list, int row, int column);

} // namespace vellumo::scenario
