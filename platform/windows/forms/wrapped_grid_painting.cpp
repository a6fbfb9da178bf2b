// How a grid of tall rows draws itself.
#include "platform/windows/forms/drawing.h"
#include "platform/windows/forms/wrapped_grid_view.h"

namespace vellumo::windows
{
namespace
{

void Fill(HDC context, const RECT& area, int systemColour)
{
    FillRect(context, &area, GetSysColorBrush(systemColour));
}

} // namespace

// Into a picture first, so that nothing flickers.
void WrappedGridView::OnPaint()
{
    const WindowPaint paint(m_list.Get());
    RECT inner{};
    GetClientRect(m_list.Get(), &inner);
    const MemoryPicture picture(paint.Context(), inner.right, inner.bottom);
    const HDC context = picture.Context();

    Fill(context, inner, COLOR_WINDOW);
    for (auto row = m_rows.RowAt(0); row && *row < m_rows.Count() && m_rows.Top(*row) < m_rows.ViewHeight(); ++*row)
    {
        PaintRow(context, *row);
    }
    const bool keyboardHere = GetFocus() == m_list.Get();
    if (keyboardHere && !m_grid.selected)
    {
        const RECT frame{1, HeaderHeight() + 1, inner.right - 1, inner.bottom - 1};
        DrawFocusRect(context, &frame);
    }
    BitBlt(paint.Context(), 0, 0, inner.right, inner.bottom, context, 0, 0, SRCCOPY);
}

void WrappedGridView::PaintRow(HDC context, std::size_t row) const
{
    const CellLook look{.selected = m_grid.selected == row, .keyboardHere = GetFocus() == m_list.Get(), .wraps = true};
    const ui::Row& cells = m_grid.rows[row];
    for (std::size_t column = 0; column < cells.size() && column < m_widths.size(); ++column)
    {
        const RECT area = CellArea(row, column);
        m_painter.Draw(context, cells[column], area, look);
        Fill(context, {area.left, area.bottom - 1, area.right, area.bottom}, COLOR_3DFACE);
        if (!look.selected)
        {
            Fill(context, {area.right - 1, area.top, area.right, area.bottom}, COLOR_3DFACE);
        }
    }
}

} // namespace vellumo::windows
