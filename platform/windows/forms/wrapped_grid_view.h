// A grid whose rows are as high as their texts, which no list of the system can show: a window class of our own with
// the system's header above. It scrolls by lines, not by rows, so that a row taller than the window can be read to its
// end. Every row is measured when the width changes, so it is for some hundreds of them.
//
// It answers the list view's messages that ask for columns, rows, cells and the selection, so that whatever reads or
// works lists from outside can do so here, too.
#pragma once

#include "platform/windows/forms/cell_painter.h"
#include "platform/windows/forms/control_view.h"
#include "platform/windows/forms/tall_rows.h"

#include <windows.h>
// After windows.h.
#include <commctrl.h>

#include <optional>
#include <string>
#include <vector>

namespace vellumo::windows
{

// The class of its windows, registered while there is a view. Views on the same thread may follow or hold one another.
class WrappedGridClass
{
public:
    static constexpr const wchar_t* name = L"VellumoWrappedGrid";

    explicit WrappedGridClass(WNDPROC procedure) noexcept;
    ~WrappedGridClass();
    WrappedGridClass(const WrappedGridClass&) = delete;
    WrappedGridClass& operator=(const WrappedGridClass&) = delete;
};

class WrappedGridView final : public ControlView
{
public:
    WrappedGridView(ui::Grid& grid, const Surface& surface, int id);

    [[nodiscard]] HWND Input() const noexcept override { return m_list.Get(); }
    [[nodiscard]] LayoutItem Needs() const override;
    void Place(const RECT& place) override;
    void Rescale() override;
    void Update() override;
    Event OnNotify(NMHDR& notification, LRESULT& answer) override;

private:
    struct MeasuredRow
    {
        std::wstring texts; // as shown
        int height = 0;     // pixels; 0: not measured
    };

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    // What a list view is asked from outside.
    LRESULT OnListMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnKey(WPARAM key);
    void OnScroll(WORD code);
    void OnWheel(int distance);
    void OnButtonDown(int y);
    void OnPaint();

    void SetUp();
    void MakeColumns();
    void MeasureRows();
    [[nodiscard]] int HeightOf(const ui::Row& row) const;
    void ShowScroll();
    void Select(std::optional<std::size_t> row);
    void TellReaders(DWORD event) const;
    void Notify(UINT code);
    void PaintRow(HDC context, std::size_t row, CellLook look) const;
    [[nodiscard]] RECT CellArea(std::size_t row, std::size_t column) const;

    ui::Grid& m_grid;
    const Surface& m_surface;
    CellPainter m_painter;
    WrappedGridClass m_class;
    TextWindow m_heading;
    TextWindow m_list;
    HWND m_header = nullptr;
    std::vector<int> m_widths; // of the columns, pixels
    std::vector<MeasuredRow> m_measured;
    TallRows m_rows;
    std::optional<std::size_t> m_shownSelection;
    int m_wheelLeft = 0; // of what the wheel turned, less than a line
};

} // namespace vellumo::windows
