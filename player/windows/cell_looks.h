// What a grid's cell looks like, read from the screen.
#pragma once

#include "ui/controls.h"

#include <windows.h>

#include <optional>

namespace vellumo::player
{

// Colours are empty where they are the system's own for windows, or for selected rows.
struct CellLooks
{
    std::optional<ui::Colour> foreground;
    std::optional<ui::Colour> background;
    ui::Image image = ui::Image::None;
};

// Scrolls the row into view first.
[[nodiscard]] CellLooks ReadCellLooks(HWND list, int row, int column);
// Where the cell stands in the list, in pixels.
[[nodiscard]] RECT CellArea(HWND list, int row, int column);

} // namespace vellumo::player
