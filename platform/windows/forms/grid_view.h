// A grid as a list view that holds no rows of its own: it asks for the cells that it is about to draw, so that
// thousands of rows cost nothing. Coloured and bold cells and those with a picture are drawn here, and keep their
// colours in the selected row. All its rows are equally high; WrappedGridView is for the others.
#pragma once

#include "platform/windows/forms/cell_painter.h"
#include "platform/windows/forms/control_view.h"

#include <commctrl.h>

#include <optional>
#include <vector>

namespace vellumo::windows
{

class GridView final : public ControlView
{
public:
    GridView(ui::Grid& grid, const Surface& surface, int id);

    [[nodiscard]] HWND Input() const noexcept override { return m_list.Get(); }
    [[nodiscard]] LayoutItem Needs() const override;
    void Place(const RECT& place) override;
    void Update() override;
    Event OnNotify(NMHDR& notification, LRESULT& answer) override;

private:
    void SetRowHeight();
    void MakeColumns();
    void FitColumns();
    [[nodiscard]] int ColumnWidth(std::size_t column) const;
    void ShowSelection();
    void AnswerText(LVITEMW& item) const;
    [[nodiscard]] LRESULT Draw(NMLVCUSTOMDRAW& drawing) const;
    [[nodiscard]] RECT CellArea(std::size_t row, int column) const;
    [[nodiscard]] std::optional<std::size_t> ListSelection() const;

    ui::Grid& m_grid;
    const Surface& m_surface;
    CellPainter m_painter;
    TextWindow m_heading;
    int m_rowHeight; // pixels
    TextWindow m_list;
    std::size_t m_shownRows = 0;
    bool m_updating = false;
};

} // namespace vellumo::windows
