#include "platform/windows/forms/wrapped_grid_view.h"

#include "host/fault.h"
#include "platform/windows/forms/abridged.h"
#include "platform/windows/forms/grid_parts.h"
#include "platform/windows/forms/window_message.h"
#include "platform/windows/system/text.h"
#include "platform/windows/system/this_module.h"

#include <windowsx.h>

#include <algorithm>

namespace vellumo::windows
{
namespace
{

constexpr int linesOfWheel = 3; // a notch

std::optional<TallRows::Step> StepOf(WPARAM key)
{
    switch (key)
    {
    case VK_UP:
        return TallRows::Step::Up;
    case VK_DOWN:
        return TallRows::Step::Down;
    case VK_PRIOR:
        return TallRows::Step::PageUp;
    case VK_NEXT:
        return TallRows::Step::PageDown;
    case VK_HOME:
        return TallRows::Step::First;
    case VK_END:
        return TallRows::Step::Last;
    default:
        return std::nullopt;
    }
}

} // namespace

WrappedGridClass::WrappedGridClass(WNDPROC procedure) noexcept
{
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.style = CS_DBLCLKS;
    description.lpfnWndProc = procedure;
    description.hInstance = ThisModule();
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = name;
    RegisterClassExW(&description); // a second view finds it registered
}

// Does nothing while another view has a window of the class; the last one succeeds.
WrappedGridClass::~WrappedGridClass()
{
    UnregisterClassW(name, ThisModule());
}

WrappedGridView::WrappedGridView(ui::Grid& grid, const Surface& surface, int id)
    : ControlView(grid)
    , m_grid(grid)
    , m_surface(surface)
    , m_painter(surface)
    , m_class(&WrappedGridView::Procedure)
    , m_heading(surface, {})
    , m_list(surface, {.windowClass = WrappedGridClass::name,
                       .style = WS_TABSTOP | WS_VSCROLL | WS_CLIPCHILDREN,
                       .extendedStyle = WS_EX_CLIENTEDGE,
                       .id = id})
{
    m_heading.Update(grid);
    m_list.UpdateState(grid);
}

void WrappedGridView::SetUp()
{
    m_header = m_surface.MakeChild({.windowClass = WC_HEADERW, .style = WS_VISIBLE | HDS_HORZ | HDS_NOSIZING}, {}, {},
                                   m_list.Get());
    MakeColumns();
    // Last: when one of these fails, the window outlives this view.
    SetWindowLongPtrW(m_list.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

void WrappedGridView::MakeColumns()
{
    for (std::size_t i = 0; i < m_grid.columns.size(); ++i)
    {
        std::wstring caption = ToWide(m_grid.columns[i].caption);
        HDITEMW column{};
        column.mask = HDI_TEXT | HDI_WIDTH | HDI_FORMAT;
        column.pszText = caption.data();
        column.cxy = m_surface.PixelsOfTwips(m_grid.columns[i].width);
        column.fmt = HDF_LEFT | HDF_STRING;
        Send(m_header, HDM_INSERTITEMW, i, reinterpret_cast<LPARAM>(&column));
    }
}

LayoutItem WrappedGridView::Needs() const
{
    const int row = m_painter.WrappedHeight({}, 0);
    int width = m_surface.Metric(SM_CXVSCROLL) + 2 * m_surface.Metric(SM_CXEDGE);
    for (const ui::Column& column : m_grid.columns)
    {
        width += m_surface.PixelsOfTwips(column.width);
    }
    return {.size = {width, HeadingHeight(m_grid, m_surface) + m_surface.HeaderHeight() + m_grid.visibleRows * row +
                                2 * m_surface.Metric(SM_CYEDGE)},
            .sameLine = m_grid.sameLine,
            .stretches = true,
            .growth = m_grid.visibleRows};
}

void WrappedGridView::Place(const RECT& place)
{
    const int top = std::min<int>(place.bottom, place.top + HeadingHeight(m_grid, m_surface));
    m_heading.Place(place.left, place.top, place.right, top);
    if (m_list.Place(place.left, top, place.right, place.bottom))
    {
        SetUp();
    }
    RECT inner{};
    GetClientRect(m_list.Get(), &inner);
    SetWindowPos(m_header, nullptr, 0, 0, inner.right, m_surface.HeaderHeight(), SWP_NOZORDER | SWP_NOACTIVATE);
    const auto widths =
        FittedColumns(m_grid.columns, m_surface.PixelsOfTwips(m_grid.columns[0].width), inner.right, m_surface);
    m_rows.SetView(inner.bottom - m_surface.HeaderHeight(), m_surface.LineHeight());
    if (widths != m_widths)
    {
        m_widths = widths;
        m_measured.clear();
        for (std::size_t i = 0; i < m_widths.size(); ++i)
        {
            HDITEMW column{};
            column.mask = HDI_WIDTH;
            column.cxy = m_widths[i];
            Send(m_header, HDM_SETITEMW, i, reinterpret_cast<LPARAM>(&column));
        }
        MeasureRows();
    }
    ShowScroll();
}

// No width is that of before, so that all rows are measured when the grid is placed.
void WrappedGridView::Rescale()
{
    m_widths.clear();
}

// Only what has changed is measured: this comes after every key.
void WrappedGridView::MeasureRows()
{
    m_measured.resize(m_grid.rows.size());
    std::vector<int> heights;
    heights.reserve(m_grid.rows.size());
    for (std::size_t i = 0; i < m_grid.rows.size(); ++i)
    {
        const ui::Row& row = m_grid.rows[i];
        std::wstring texts;
        for (const ui::Cell& cell : row)
        {
            texts.append(Abridged(cell.text)).append(cell.strong ? L"\1" : L"\2");
        }
        MeasuredRow& measured = m_measured[i];
        if (measured.height == 0 || measured.texts != texts)
        {
            measured = {std::move(texts), HeightOf(row)};
        }
        heights.push_back(measured.height);
    }
    m_rows.SetHeights(heights);
}

int WrappedGridView::HeightOf(const ui::Row& row) const
{
    int height = 0;
    for (std::size_t column = 0; column < row.size() && column < m_widths.size(); ++column)
    {
        height = std::max(height, m_painter.WrappedHeight(row[column], m_widths[column]));
    }
    return height;
}

void WrappedGridView::Update()
{
    m_heading.Update(m_grid);
    m_list.UpdateState(m_grid);
    MeasureRows();
    if (m_grid.selected != m_shownSelection)
    {
        m_shownSelection = m_grid.selected;
        if (m_shownSelection && *m_shownSelection < m_rows.Count())
        {
            m_rows.Show(*m_shownSelection);
        }
    }
    ShowScroll();
}

// The bar stays where there is nothing to scroll: if it came and went, the width and with it the heights would change.
void WrappedGridView::ShowScroll()
{
    SCROLLINFO scroll{};
    scroll.cbSize = sizeof scroll;
    scroll.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    scroll.nMax = std::max(0, m_rows.TotalHeight() - 1);
    scroll.nPage = static_cast<UINT>(m_rows.ViewHeight());
    scroll.nPos = m_rows.Scroll();
    SetScrollInfo(m_list.Get(), SB_VERT, &scroll, TRUE);
    InvalidateRect(m_list.Get(), nullptr, FALSE);
}

Event WrappedGridView::OnNotify(NMHDR& notification, LRESULT&)
{
    if (notification.code == NM_DBLCLK)
    {
        return m_grid.selected ? Event::Clicked : Event::None;
    }
    return notification.code == static_cast<UINT>(LVN_ITEMCHANGED) ? Event::Changed : Event::None;
}

// Windows calls here: nothing may escape.
LRESULT CALLBACK WrappedGridView::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    auto* const self = reinterpret_cast<WrappedGridView*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr)
    {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    // Without memory for a text or a picture: the next drawing may have it.
    return host::Trap(LRESULT{0}, [&] { return self->OnMessage(message, wParam, lParam); });
}

LRESULT WrappedGridView::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_PAINT:
        OnPaint();
        return 0;
    case WM_ERASEBKGND:
        return 1; // painting covers everything
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        InvalidateRect(m_list.Get(), nullptr, FALSE);
        TellReaders(EVENT_OBJECT_FOCUS);
        return 0;
    case WM_KEYDOWN:
        OnKey(wParam);
        return 0;
    case WM_VSCROLL:
        OnScroll(LOWORD(wParam));
        return 0;
    case WM_MOUSEWHEEL:
        OnWheel(GET_WHEEL_DELTA_WPARAM(wParam));
        return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        OnButtonDown(GET_Y_LPARAM(lParam));
        if (message == WM_LBUTTONDBLCLK)
        {
            Notify(static_cast<UINT>(NM_DBLCLK));
        }
        return 0;
    default:
        return OnListMessage(message, wParam, lParam);
    }
}

LRESULT WrappedGridView::OnListMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    const std::size_t row = wParam;
    switch (message)
    {
    case LVM_GETHEADER:
        return reinterpret_cast<LRESULT>(m_header);
    case LVM_GETCOLUMNWIDTH:
        return wParam < m_widths.size() ? m_widths[wParam] : 0;
    case LVM_GETITEMCOUNT:
        return static_cast<LRESULT>(m_rows.Count());
    case LVM_GETNEXTITEM: // of the selected ones, of which there is at most one
        return m_grid.selected && wParam == static_cast<WPARAM>(-1) ? static_cast<LRESULT>(*m_grid.selected) : -1;
    case LVM_GETITEMTEXTW:
    {
        auto& item = *reinterpret_cast<LVITEMW*>(lParam);
        return static_cast<LRESULT>(GiveText(CellAt(m_grid, row, item.iSubItem), item));
    }
    case LVM_SETITEMSTATE:
        if (row < m_rows.Count() && (reinterpret_cast<LVITEMW*>(lParam)->state & LVIS_SELECTED) != 0)
        {
            Select(row);
        }
        return TRUE;
    case LVM_ENSUREVISIBLE:
        if (row < m_rows.Count())
        {
            m_rows.Show(row);
            ShowScroll();
        }
        return TRUE;
    case LVM_GETSUBITEMRECT:
    {
        auto& area = *reinterpret_cast<RECT*>(lParam);
        const auto column = static_cast<std::size_t>(area.top);
        if (row >= m_rows.Count() || column >= m_widths.size())
        {
            return FALSE;
        }
        area = CellArea(row, column);
        return TRUE;
    }
    default:
        return DefWindowProcW(m_list.Get(), message, wParam, lParam);
    }
}

void WrappedGridView::OnKey(WPARAM key)
{
    CopyOnKey(m_grid, key, m_surface.Window());
    if (const auto step = StepOf(key))
    {
        const auto row = m_rows.Move(*step, m_grid.selected);
        // Where the move led is shown already, which may be in the middle of a tall row.
        m_shownSelection = row;
        ShowScroll();
        Select(row);
    }
}

void WrappedGridView::OnScroll(WORD code)
{
    SCROLLINFO scroll{};
    scroll.cbSize = sizeof scroll;
    scroll.fMask = SIF_TRACKPOS;
    switch (code)
    {
    case SB_LINEUP:
    case SB_LINEDOWN:
        m_rows.ScrollLines(code == SB_LINEUP ? -1 : 1);
        break;
    case SB_PAGEUP:
    case SB_PAGEDOWN:
        m_rows.ScrollPages(code == SB_PAGEUP ? -1 : 1);
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        GetScrollInfo(m_list.Get(), SB_VERT, &scroll);
        m_rows.ScrollTo(scroll.nTrackPos);
        break;
    case SB_TOP:
    case SB_BOTTOM:
        m_rows.ScrollTo(code == SB_TOP ? 0 : m_rows.TotalHeight());
        break;
    default:
        return;
    }
    ShowScroll();
}

// Fine wheels turn by less than a notch.
void WrappedGridView::OnWheel(int distance)
{
    m_wheelLeft += distance * linesOfWheel;
    const int lines = m_wheelLeft / WHEEL_DELTA;
    m_wheelLeft -= lines * WHEEL_DELTA;
    m_rows.ScrollLines(-lines);
    ShowScroll();
}

void WrappedGridView::OnButtonDown(int y)
{
    SetFocus(m_list.Get());
    if (y >= m_surface.HeaderHeight())
    {
        const auto row = m_rows.RowAt(y - m_surface.HeaderHeight());
        m_shownSelection = row; // it stays under the mouse
        Select(row);
    }
}

void WrappedGridView::Select(std::optional<std::size_t> row)
{
    if (row != m_grid.selected)
    {
        m_grid.selected = row;
        InvalidateRect(m_list.Get(), nullptr, FALSE);
        TellReaders(EVENT_OBJECT_SELECTION);
        TellReaders(EVENT_OBJECT_FOCUS);
        Notify(static_cast<UINT>(LVN_ITEMCHANGED));
    }
}

// A list of the system does this by itself.
void WrappedGridView::TellReaders(DWORD event) const
{
    if (m_grid.selected && GetFocus() == m_list.Get())
    {
        NotifyWinEvent(event, m_list.Get(), OBJID_CLIENT, static_cast<LONG>(*m_grid.selected) + 1);
    }
}

void WrappedGridView::Notify(UINT code)
{
    NMHDR notification{m_list.Get(), static_cast<UINT_PTR>(GetDlgCtrlID(m_list.Get())), code};
    Send(m_surface.Window(), WM_NOTIFY, notification.idFrom, reinterpret_cast<LPARAM>(&notification));
}

RECT WrappedGridView::CellArea(std::size_t row, std::size_t column) const
{
    const int top = m_surface.HeaderHeight();
    RECT area{0, top + m_rows.Top(row), 0, top + m_rows.Bottom(row)};
    for (std::size_t i = 0; i <= column; ++i)
    {
        area.left = area.right;
        area.right += m_widths[i];
    }
    return area;
}

} // namespace vellumo::windows
