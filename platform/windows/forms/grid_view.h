// A grid as a list view that holds no rows of its own: it asks for the cells that it is about to draw, so that
// thousands of rows cost nothing. The cells are drawn here. All its rows are equally high; WrappedGridView is for the
// others.
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
    void Rescale() override;
    void Update() override;
    Event OnNotify(NMHDR& notification, LRESULT& answer) override;

private:
    void SetUp();
    void SetRowCount();
    void SetRowHeight();
    [[nodiscard]] int RowHeight() const;
    void MakeColumns();
    void FitColumns();
    [[nodiscard]] std::vector<int> FittedWidths(int first) const;
    void SetColumns(const std::vector<int>& widths) const;
    [[nodiscard]] int ColumnWidth(std::size_t column) const;
    void ShowSelection();
    void AnswerText(LVITEMW& item) const;
    [[nodiscard]] LRESULT Draw(NMLVCUSTOMDRAW& drawing);
    [[nodiscard]] RECT RowsArea() const;
    [[nodiscard]] std::optional<std::size_t> ListSelection() const;

    ui::Grid& m_grid;
    const Surface& m_surface;
    CellPainter m_painter;
    CellLook m_look; // while it is painted
    TextWindow m_heading;
    TextWindow m_list;
    std::size_t m_shownRows = 0;
    bool m_updating = false;
};

} // namespace vellumo::windows
