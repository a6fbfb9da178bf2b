// What both kinds of grids do alike.
#pragma once

#include "platform/windows/forms/surface.h"
#include "ui/controls.h"

#include <windows.h>
// After windows.h.
#include <commctrl.h>

#include <cstddef>
#include <string>
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
// Where a cell stands in the list; works for both kinds.
[[nodiscard]] RECT CellPlace(HWND list, std::size_t row, std::size_t column);
// What a picture says; empty without one.
[[nodiscard]] std::wstring WordFor(ui::Image image);
// What a cell says, its picture included; of a row each cell that says something, behind its column's caption.
[[nodiscard]] std::wstring SpokenCell(const ui::Cell& cell);
[[nodiscard]] std::wstring SpokenRow(const ui::Grid& grid, std::size_t row);
// Puts the selected row into the clipboard when these are the keys for it: a line, with tabs between the cells.
void CopyOnKey(const ui::Grid& grid, WPARAM key, HWND owner);
// A frame in the list when it has the keyboard and no selected row shows it.
void ShowKeyboard(HDC context, const ui::Grid& grid, HWND list, RECT rows);
// Writes a cell's text where a list view wants it; returns its length, which is 0 without a cell.
std::size_t GiveText(const ui::Cell* cell, LVITEMW& item);

} // namespace vellumo::windows
