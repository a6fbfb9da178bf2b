// How a grid of tall rows draws itself.
#include "platform/windows/forms/drawing.h"
#include "platform/windows/forms/grid_parts.h"
#include "platform/windows/forms/wrapped_grid_view.h"

namespace vellumo::windows
{

// Into a picture first, so that nothing flickers.
void WrappedGridView::OnPaint()
{
    const WindowPaint paint(m_list.Get());
    RECT inner{};
    GetClientRect(m_list.Get(), &inner);
    const MemoryPicture picture(paint.Context(), inner.right, inner.bottom);
    const HDC context = picture.Context();

    FillRect(context, &inner, GetSysColorBrush(COLOR_WINDOW));
    CellLook look = LookOf(m_list.Get());
    look.wraps = true;
    for (auto row = m_rows.RowAt(0); row && *row < m_rows.Count() && m_rows.Top(*row) < m_rows.ViewHeight(); ++*row)
    {
        PaintRow(context, *row, look);
    }
    inner.top = m_surface.HeaderHeight();
    ShowKeyboard(context, m_grid, m_list.Get(), inner);
    inner.top = 0;
    BitBlt(paint.Context(), 0, 0, inner.right, inner.bottom, context, 0, 0, SRCCOPY);
}

void WrappedGridView::PaintRow(HDC context, std::size_t row, CellLook look) const
{
    look.selected = m_grid.selected == row;
    const ui::Row& cells = m_grid.rows[row];
    for (std::size_t column = 0; column < cells.size() && column < m_widths.size(); ++column)
    {
        m_painter.Draw(context, cells[column], CellArea(row, column), look);
    }
}

} // namespace vellumo::windows
