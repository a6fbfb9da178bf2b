// Draws the cells of grids: their texts, pictures and colours, and the row that the operator is on.
#pragma once

#include "platform/windows/forms/surface.h"
#include "ui/controls.h"

namespace vellumo::windows
{

struct CellLook
{
    bool selected = false;
    bool keyboardHere = false; // the grid has it
    bool wraps = false;        // on several lines; else one, cut with an ellipsis
    bool ownColours = true;    // the system's allow them
};

// What all cells of a grid have in common while it is painted; to ask for each takes as long as to draw it.
[[nodiscard]] CellLook LookOf(HWND grid) noexcept;

class CellPainter
{
public:
    explicit CellPainter(const Surface& surface)
        : m_surface(surface)
    {
    }

    // What a cell of that width needs when its text is wrapped.
    [[nodiscard]] int WrappedHeight(const ui::Cell& cell, int width) const;
    // The area includes the grid lines at its bottom and right.
    void Draw(HDC context, const ui::Cell& cell, RECT area, const CellLook& look) const;

private:
    [[nodiscard]] int ImageRoom(const ui::Cell& cell) const;
    void DrawImage(HDC context, ui::Image image, const RECT& area, bool wraps) const;

    const Surface& m_surface;
};

} // namespace vellumo::windows
