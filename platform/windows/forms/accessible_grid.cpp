#include "platform/windows/forms/accessible_grid.h"

#include "platform/windows/forms/accessible_control.h"
#include "platform/windows/forms/grid_parts.h"
#include "platform/windows/forms/window_message.h"

#include <algorithm>

namespace vellumo::windows
{
namespace
{

// Of what stands in a list: nothing of it may be in view.
LONG StateIn(HWND list, const RECT& place, bool selected, bool focused)
{
    RECT view{};
    RECT common{};
    GetWindowRect(list, &view);
    const bool inView = IntersectRect(&common, &view, &place) != FALSE;
    return (selected ? STATE_SYSTEM_SELECTED : 0) | (focused ? STATE_SYSTEM_FOCUSED : 0) |
           (inView ? 0 : STATE_SYSTEM_OFFSCREEN);
}

} // namespace

RECT AccessibleGrid::PlaceOfCell(std::size_t row, std::size_t column) const
{
    RECT place = CellPlace(Window(), row, column);
    MapWindowPoints(Window(), nullptr, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

RECT AccessibleGrid::PlaceOfRow(std::size_t row) const
{
    RECT place = PlaceOfCell(row, 0);
    const std::size_t columns = m_grid.columns.size();
    place.right = columns == 0 ? place.right : PlaceOfCell(row, columns - 1).right;
    return place;
}

AccessibleFacts AccessibleGrid::RowFacts(std::size_t row) const
{
    const bool selected = m_grid.selected == row;
    AccessibleFacts facts;
    facts.name = SpokenRow(m_grid, row);
    facts.role = ROLE_SYSTEM_ROW;
    facts.place = PlaceOfRow(row);
    facts.state = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE |
                  StateIn(Window(), facts.place, selected, selected && HasKeyboard());
    return facts;
}

AccessibleFacts AccessibleGrid::Facts(LONG part) const
{
    if (part != CHILDID_SELF)
    {
        return RowFacts(static_cast<std::size_t>(part - 1));
    }
    AccessibleFacts facts;
    facts.name = NameOf(m_namedBy.text);
    facts.shortcut = ShortcutOf(m_grid.text);
    facts.role = ROLE_SYSTEM_TABLE;
    facts.state = (IsWindowEnabled(Window()) == FALSE ? STATE_SYSTEM_UNAVAILABLE : STATE_SYSTEM_FOCUSABLE) |
                  (HasKeyboard() ? STATE_SYSTEM_FOCUSED : 0) |
                  (IsWindowVisible(Window()) == FALSE ? STATE_SYSTEM_INVISIBLE : 0);
    GetWindowRect(Window(), &facts.place);
    return facts;
}

ComPtr<IAccessible> AccessibleGrid::PartObject(LONG part)
{
    return ComPtr<IAccessible>::Attach(new AccessibleRow(*this, static_cast<std::size_t>(part - 1)));
}

std::optional<LONG> AccessibleGrid::FocusedPart() const
{
    return HasKeyboard() ? std::optional(SelectedPart().value_or(CHILDID_SELF)) : std::nullopt;
}

std::optional<LONG> AccessibleGrid::SelectedPart() const
{
    return m_grid.selected ? std::optional(static_cast<LONG>(*m_grid.selected) + 1) : std::nullopt;
}

// The rows stand one below the other.
LONG AccessibleGrid::PartAt(POINT onScreen) const
{
    std::size_t first = 0;
    std::size_t end = m_grid.rows.size();
    while (first < end)
    {
        const std::size_t middle = (first + end) / 2;
        const RECT place = PlaceOfRow(middle);
        if (onScreen.y < place.top)
        {
            end = middle;
        }
        else if (onScreen.y >= place.bottom)
        {
            first = middle + 1;
        }
        else
        {
            return static_cast<LONG>(middle) + 1;
        }
    }
    return CHILDID_SELF;
}

bool AccessibleGrid::Select(LONG part)
{
    if (part == CHILDID_SELF)
    {
        return false;
    }
    LVITEMW item{};
    item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    Send(Window(), LVM_SETITEMSTATE, static_cast<WPARAM>(part - 1), reinterpret_cast<LPARAM>(&item));
    Send(Window(), LVM_ENSUREVISIBLE, static_cast<WPARAM>(part - 1), FALSE);
    return true;
}

AccessibleFacts AccessibleRow::CellFacts(std::size_t column) const
{
    const ui::Grid& grid = m_grid->Grid();
    AccessibleFacts facts;
    facts.name = SpokenCell(grid.rows[m_row][column]);
    facts.description = NameOf(grid.columns[column].caption);
    facts.role = ROLE_SYSTEM_CELL;
    facts.place = m_grid->PlaceOfCell(m_row, column);
    facts.state = STATE_SYSTEM_READONLY | StateIn(Window(), facts.place, IsSelected(), false);
    return facts;
}

AccessibleFacts AccessibleRow::Facts(LONG part) const
{
    return part == CHILDID_SELF ? m_grid->RowFacts(m_row) : CellFacts(static_cast<std::size_t>(part - 1));
}

LONG AccessibleRow::PartCount() const
{
    return static_cast<LONG>(std::min(m_grid->Grid().rows[m_row].size(), m_grid->Grid().columns.size()));
}

ComPtr<IDispatch> AccessibleRow::Parent() const
{
    return ComPtr<IDispatch>(m_grid.Get());
}

std::optional<LONG> AccessibleRow::FocusedPart() const
{
    return IsSelected() && m_grid->HasKeyboard() ? std::optional<LONG>(CHILDID_SELF) : std::nullopt;
}

LONG AccessibleRow::PartAt(POINT onScreen) const
{
    for (LONG part = 1; part <= PartCount(); ++part)
    {
        const RECT place = m_grid->PlaceOfCell(m_row, static_cast<std::size_t>(part - 1));
        if (PtInRect(&place, onScreen) != FALSE)
        {
            return part;
        }
    }
    return CHILDID_SELF;
}

bool AccessibleRow::Select(LONG)
{
    return m_grid->Select(static_cast<LONG>(m_row) + 1);
}

} // namespace vellumo::windows
