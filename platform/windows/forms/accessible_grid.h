// A grid, its rows and its cells as screen readers get them: a table, a row an object, a cell a part of its row. For
// both kinds of grids: each answers the list view's messages that ask where a cell stands and select a row.
#pragma once

#include "platform/windows/forms/accessible.h"
#include "ui/controls.h"

#include <cstddef>
#include <string>

namespace vellumo::windows
{

class AccessibleGrid final : public Accessible
{
public:
    // A grid without a heading is named by what stands before it. Both outlive the connection.
    AccessibleGrid(HWND list, const ui::Grid& grid, const ui::Control& namedBy)
        : Accessible(list)
        , m_grid(grid)
        , m_namedBy(namedBy)
    {
    }

    [[nodiscard]] const ui::Grid& Grid() const noexcept { return m_grid; }
    [[nodiscard]] bool HasRow(std::size_t row) const noexcept { return IsConnected() && row < m_grid.rows.size(); }
    [[nodiscard]] bool HasKeyboard() const noexcept { return GetFocus() == Window(); }
    // On the screen; outside the list for what is scrolled away.
    [[nodiscard]] RECT PlaceOfCell(std::size_t row, std::size_t column) const;
    [[nodiscard]] AccessibleFacts RowFacts(std::size_t row) const;
    bool Select(LONG part) override;

protected:
    [[nodiscard]] AccessibleFacts Facts(LONG part) const override;
    [[nodiscard]] LONG PartCount() const override { return static_cast<LONG>(m_grid.rows.size()); }
    [[nodiscard]] ComPtr<IAccessible> PartObject(LONG part) override;
    [[nodiscard]] std::optional<LONG> FocusedPart() const override;
    [[nodiscard]] std::optional<LONG> SelectedPart() const override;
    [[nodiscard]] LONG PartAt(POINT onScreen) const override;

private:
    ~AccessibleGrid() override = default;

    [[nodiscard]] RECT PlaceOfRow(std::size_t row) const;

    const ui::Grid& m_grid;
    const ui::Control& m_namedBy;
};

class AccessibleRow final : public Accessible
{
public:
    AccessibleRow(AccessibleGrid& grid, std::size_t row)
        : Accessible(grid.Window())
        , m_grid(&grid)
        , m_row(row)
    {
    }

    // A grid that was filled anew may have fewer rows.
    [[nodiscard]] bool IsConnected() const noexcept override { return m_grid->HasRow(m_row); }

protected:
    [[nodiscard]] AccessibleFacts Facts(LONG part) const override;
    [[nodiscard]] LONG PartCount() const override;
    [[nodiscard]] ComPtr<IDispatch> Parent() const override;
    [[nodiscard]] std::optional<LONG> FocusedPart() const override;
    [[nodiscard]] LONG PartAt(POINT onScreen) const override;
    bool Select(LONG part) override;

private:
    ~AccessibleRow() override = default;

    [[nodiscard]] AccessibleFacts CellFacts(std::size_t column) const;
    [[nodiscard]] bool IsSelected() const noexcept { return m_grid->Grid().selected == m_row; }

    ComPtr<AccessibleGrid> m_grid;
    std::size_t m_row;
};

} // namespace vellumo::windows
