// Rows of different heights seen through a view that is lower than all of them together, and possibly lower than one of
// them. Where each row stands, how far the view is scrolled, and where a key leads. In pixels, without a window.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace vellumo::windows
{

class TallRows
{
public:
    enum class Step
    {
        Up,
        Down,
        PageUp,
        PageDown,
        First,
        Last
    };

    void SetHeights(const std::vector<int>& heights);
    // The view's height, and how far one line of text goes. The row at the top stays there as far as possible.
    void SetView(int height, int line);

    [[nodiscard]] std::size_t Count() const noexcept { return m_ends.size(); }
    [[nodiscard]] int TotalHeight() const noexcept { return m_ends.empty() ? 0 : m_ends.back(); }
    [[nodiscard]] int ViewHeight() const noexcept { return m_view; }
    [[nodiscard]] int Scroll() const noexcept { return m_scroll; }
    // Top and bottom of a row, counted from the top of the view.
    [[nodiscard]] int Top(std::size_t row) const { return (row == 0 ? 0 : m_ends[row - 1]) - m_scroll; }
    [[nodiscard]] int Bottom(std::size_t row) const { return m_ends[row] - m_scroll; }
    // The row at that height of the view; empty below the last one.
    [[nodiscard]] std::optional<std::size_t> RowAt(int y) const;

    // As near as there is something to see.
    void ScrollTo(int scroll);
    void ScrollLines(int lines) { ScrollTo(m_scroll + lines * m_line); }
    void ScrollPages(int pages) { ScrollTo(m_scroll + pages * PageStep()); }
    // The whole row, or its beginning when it is taller than the view.
    void Show(std::size_t row);
    // Scrolls, and returns the row that the operator is then on. What does not fit is passed over in steps: no key
    // leads past lines that have not been in view.
    [[nodiscard]] std::optional<std::size_t> Move(Step step, std::optional<std::size_t> from);

private:
    [[nodiscard]] int PageStep() const noexcept;
    [[nodiscard]] std::size_t Down(std::optional<std::size_t> from);
    [[nodiscard]] std::size_t Up(std::optional<std::size_t> from);
    [[nodiscard]] std::size_t Page(int direction);

    std::vector<int> m_ends; // where each row ends, from the top of the first
    int m_view = 0;
    int m_line = 1;
    int m_scroll = 0;
};

} // namespace vellumo::windows
