// What both kinds of grids do alike.
#pragma once

#include "platform/windows/forms/surface.h"
#include "ui/controls.h"

#include <windows.h>
// After windows.h.
#include <commctrl.h>

#include <cstddef>
#include <vector>

namespace vellumo::windows
{

// Widths in pixels: the first column keeps its own, the others share the rest in proportion to their design.
[[nodiscard]] std::vector<int> FittedColumns(const std::vector<ui::Column>& columns, int firstWidth, int width,
                                             const Surface& surface);

// Pixels of the line above the grid.
[[nodiscard]] int HeadingHeight(const ui::Grid& grid, const Surface& surface);
// Null when there is no such cell.
[[nodiscard]] const ui::Cell* CellAt(const ui::Grid& grid, std::size_t row, int column);
// Writes a cell's text where a list view wants it; returns its length, which is 0 without a cell.
std::size_t GiveText(const ui::Cell* cell, LVITEMW& item);

} // namespace vellumo::windows
