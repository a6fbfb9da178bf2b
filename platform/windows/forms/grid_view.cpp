#include "platform/windows/forms/grid_view.h"

#include "platform/windows/forms/grid_parts.h"
#include "platform/windows/forms/window_message.h"
#include "platform/windows/system/text.h"

#include <algorithm>

namespace vellumo::windows
{
namespace
{

constexpr int rowLine = 1; // that a list view leaves below each row
constexpr DWORD listStyle =
    LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER | WS_TABSTOP;
constexpr DWORD extendedListStyle = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP;

} // namespace

GridView::GridView(ui::Grid& grid, const Surface& surface, int id)
    : ControlView(grid)
    , m_grid(grid)
    , m_surface(surface)
    , m_painter(surface)
    , m_heading(surface, {})
    , m_list(surface, {.windowClass = WC_LISTVIEWW, .style = listStyle, .extendedStyle = WS_EX_CLIENTEDGE, .id = id})
{
    m_heading.Update(grid);
    m_list.UpdateState(grid);
}

void GridView::SetUp()
{
    Send(m_list.Get(), LVM_SETEXTENDEDLISTVIEWSTYLE, 0, extendedListStyle);
    SetRowHeight();
    SetRowCount();
    MakeColumns();
}

int GridView::RowHeight() const
{
    return m_surface.LineHeight() + m_surface.Pixels(5);
}

// A list view makes its rows as high as its images; this one has no other. The list view destroys the last one.
void GridView::SetRowHeight()
{
    const HIMAGELIST images = ImageList_Create(1, RowHeight(), ILC_COLOR, 1, 0);
    const LRESULT before = Send(m_list.Get(), LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images));
    if (before != 0)
    {
        ImageList_Destroy(reinterpret_cast<HIMAGELIST>(before));
    }
}

void GridView::Rescale()
{
    SetRowHeight();
    Send(m_list.Get(), LVM_SETCOLUMNWIDTH, 0, m_surface.PixelsOfTwips(m_grid.columns[0].width));
}

// As wide as they will be: a list lays itself out anew for each that changes.
void GridView::MakeColumns()
{
    const auto widths = FittedWidths(m_surface.PixelsOfTwips(m_grid.columns[0].width));
    for (std::size_t i = 0; i < m_grid.columns.size(); ++i)
    {
        std::wstring caption = ToWide(m_grid.columns[i].caption);
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.pszText = caption.data();
        column.cx = widths[i];
        Send(m_list.Get(), LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
    }
}

LayoutItem GridView::Needs() const
{
    const int height =
        m_surface.HeaderHeight() + m_grid.visibleRows * (RowHeight() + rowLine) + 2 * m_surface.Metric(SM_CYEDGE);
    int width = m_surface.Metric(SM_CXVSCROLL) + 2 * m_surface.Metric(SM_CXEDGE);
    for (const ui::Column& column : m_grid.columns)
    {
        width += m_surface.PixelsOfTwips(column.width);
    }
    return {.size = {width, HeadingHeight(m_grid, m_surface) + height},
            .sameLine = m_grid.sameLine,
            .stretches = true,
            .growth = m_grid.visibleRows};
}

void GridView::Place(const RECT& place)
{
    const int top = std::min<int>(place.bottom, place.top + HeadingHeight(m_grid, m_surface));
    m_heading.Place(place.left, place.top, place.right, top);
    if (m_list.Place(place.left, top, place.right, place.bottom))
    {
        SetUp();
    }
    FitColumns();
    if (m_grid.selected)
    {
        Send(m_list.Get(), LVM_ENSUREVISIBLE, *m_grid.selected, FALSE);
    }
}

// What the columns are to be as wide as; the first one stays as it is.
std::vector<int> GridView::FittedWidths(int first) const
{
    RECT list{};
    GetWindowRect(m_list.Get(), &list);
    int width = list.right - list.left - 2 * m_surface.Metric(SM_CXEDGE);
    if (Send(m_list.Get(), LVM_GETCOUNTPERPAGE) < static_cast<LRESULT>(m_shownRows))
    {
        width -= m_surface.Metric(SM_CXVSCROLL);
    }
    return FittedColumns(m_grid.columns, first, width, m_surface);
}

void GridView::FitColumns()
{
    const auto widths = FittedWidths(ColumnWidth(0));
    for (std::size_t i = 1; i < widths.size(); ++i)
    {
        if (ColumnWidth(i) != widths[i])
        {
            SetColumns(widths);
            return;
        }
    }
}

void GridView::SetColumns(const std::vector<int>& widths) const
{
    Send(m_list.Get(), WM_SETREDRAW, FALSE); // else it scrolls and draws for each
    for (std::size_t i = 1; i < widths.size(); ++i)
    {
        Send(m_list.Get(), LVM_SETCOLUMNWIDTH, i, widths[i]);
    }
    Send(m_list.Get(), WM_SETREDRAW, TRUE);
}

int GridView::ColumnWidth(std::size_t column) const
{
    return static_cast<int>(Send(m_list.Get(), LVM_GETCOLUMNWIDTH, column));
}

void GridView::Update()
{
    m_heading.Update(m_grid);
    m_list.UpdateState(m_grid);
    m_updating = true;
    if (m_shownRows != m_grid.rows.size())
    {
        SetRowCount();
        FitColumns();
    }
    ShowSelection();
    m_updating = false;
    InvalidateRect(m_list.Get(), nullptr, FALSE);
}

void GridView::SetRowCount()
{
    m_shownRows = m_grid.rows.size();
    Send(m_list.Get(), LVM_SETITEMCOUNT, m_shownRows, LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
}

void GridView::ShowSelection()
{
    const auto shown = ListSelection();
    if (shown == m_grid.selected)
    {
        return;
    }
    LVITEMW state{};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    Send(m_list.Get(), LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&state));
    if (m_grid.selected)
    {
        state.state = state.stateMask;
        Send(m_list.Get(), LVM_SETITEMSTATE, *m_grid.selected, reinterpret_cast<LPARAM>(&state));
    }
    if (m_shownRows > 0)
    {
        Send(m_list.Get(), LVM_ENSUREVISIBLE, m_grid.selected.value_or(0), FALSE);
    }
}

std::optional<std::size_t> GridView::ListSelection() const
{
    const LRESULT row = Send(m_list.Get(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
    return row >= 0 && static_cast<std::size_t>(row) < m_grid.rows.size() ? std::optional(static_cast<std::size_t>(row))
                                                                          : std::nullopt;
}

Event GridView::OnNotify(NMHDR& notification, LRESULT& answer)
{
    switch (notification.code)
    {
    case LVN_GETDISPINFOW:
        AnswerText(reinterpret_cast<NMLVDISPINFOW&>(notification).item);
        return Event::None;
    case NM_CUSTOMDRAW:
        answer = Draw(reinterpret_cast<NMLVCUSTOMDRAW&>(notification));
        return Event::None;
    case LVN_ITEMCHANGED:
        // Moving from row to row first takes the old selection back; that is not the operator's choice yet.
        if (m_updating || (reinterpret_cast<NMLISTVIEW&>(notification).uNewState & LVIS_SELECTED) == 0)
        {
            return Event::None;
        }
        [[fallthrough]];
    case NM_CLICK: // also beside the rows, which selects none
        if (const auto row = ListSelection(); row != m_grid.selected)
        {
            m_grid.selected = row;
            return Event::Changed;
        }
        return Event::None;
    case LVN_KEYDOWN:
        CopyOnKey(m_grid, reinterpret_cast<NMLVKEYDOWN&>(notification).wVKey, m_surface.Window());
        return Event::None;
    case NM_DBLCLK:
        return m_grid.selected ? Event::Clicked : Event::None;
    default:
        return Event::None;
    }
}

void GridView::AnswerText(LVITEMW& item) const
{
    if ((item.mask & LVIF_TEXT) != 0)
    {
        GiveText(CellAt(m_grid, static_cast<std::size_t>(item.iItem), item.iSubItem), item);
    }
}

LRESULT GridView::Draw(NMLVCUSTOMDRAW& drawing)
{
    const auto row = static_cast<std::size_t>(drawing.nmcd.dwItemSpec);
    switch (drawing.nmcd.dwDrawStage)
    {
    case CDDS_PREPAINT:
        m_look = LookOf(m_list.Get());
        return CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT;
    case CDDS_POSTPAINT:
        ShowKeyboard(drawing.nmcd.hdc, m_grid, m_list.Get(), RowsArea());
        return CDRF_DODEFAULT;
    case CDDS_ITEMPREPAINT:
        return CDRF_NOTIFYSUBITEMDRAW;
    case CDDS_ITEMPREPAINT | CDDS_SUBITEM:
        if (const ui::Cell* const cell = CellAt(m_grid, row, drawing.iSubItem); cell != nullptr)
        {
            CellLook look = m_look;
            look.selected = m_grid.selected == row;
            m_painter.Draw(drawing.nmcd.hdc, *cell,
                           CellPlace(m_list.Get(), row, static_cast<std::size_t>(drawing.iSubItem)), look);
            return CDRF_SKIPDEFAULT;
        }
        return CDRF_DODEFAULT;
    default:
        return CDRF_DODEFAULT;
    }
}

RECT GridView::RowsArea() const
{
    RECT inner{};
    GetClientRect(m_list.Get(), &inner);
    inner.top = m_surface.HeaderHeight();
    return inner;
}

} // namespace vellumo::windows
