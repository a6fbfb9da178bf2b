#include "platform/windows/forms/tall_rows.h"

#include <algorithm>

namespace vellumo::windows
{
namespace
{

constexpr int linesAtOnce = 3; // through a row that is taller than the view

} // namespace

void TallRows::SetHeights(const std::vector<int>& heights)
{
    const auto top = RowAt(0);
    const int hidden = top ? -Top(*top) : 0;
    m_ends.clear();
    int end = 0;
    for (const int height : heights)
    {
        m_ends.push_back(end += height);
    }
    ScrollTo(0);
    if (top && *top < m_ends.size())
    {
        ScrollTo(Top(*top) + std::min(hidden, Bottom(*top) - Top(*top)));
    }
}

void TallRows::SetView(int height, int line)
{
    m_view = std::max(0, height);
    m_line = std::max(1, line);
    ScrollTo(m_scroll);
}

std::optional<std::size_t> TallRows::RowAt(int y) const
{
    const auto found = std::upper_bound(m_ends.begin(), m_ends.end(), y + m_scroll);
    return found == m_ends.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - m_ends.begin()));
}

void TallRows::ScrollTo(int scroll)
{
    m_scroll = std::clamp(scroll, 0, std::max(0, TotalHeight() - m_view));
}

void TallRows::Show(std::size_t row)
{
    if (Bottom(row) > m_view)
    {
        ScrollTo(m_scroll + Bottom(row) - m_view);
    }
    if (Top(row) < 0)
    {
        ScrollTo(m_scroll + Top(row));
    }
}

std::optional<std::size_t> TallRows::Move(Step step, std::optional<std::size_t> from)
{
    if (m_ends.empty())
    {
        return std::nullopt;
    }
    switch (step)
    {
    case Step::Up:
        return Up(from);
    case Step::Down:
        return Down(from);
    case Step::PageUp:
        return Page(-1);
    case Step::PageDown:
        return Page(1);
    case Step::First:
        ScrollTo(0);
        return 0;
    case Step::Last:
        ScrollTo(TotalHeight());
        return m_ends.size() - 1;
    }
    return from;
}

// A line stays in view, so that the eye finds where it was.
int TallRows::PageStep() const noexcept
{
    return std::max(m_line, m_view - m_line);
}

std::size_t TallRows::Down(std::optional<std::size_t> from)
{
    if (!from)
    {
        const std::size_t first = RowAt(0).value_or(0);
        Show(first);
        return first;
    }
    if (Top(*from) >= m_view || Bottom(*from) <= 0) // scrolled away with the mouse
    {
        Show(*from);
    }
    if (Bottom(*from) > m_view)
    {
        ScrollTo(m_scroll + std::min({Bottom(*from) - m_view, linesAtOnce * m_line, PageStep()}));
        return *from;
    }
    const std::size_t next = std::min(*from + 1, m_ends.size() - 1);
    Show(next);
    return next;
}

std::size_t TallRows::Up(std::optional<std::size_t> from)
{
    if (!from)
    {
        return Down(from);
    }
    if (Top(*from) >= m_view || Bottom(*from) <= 0)
    {
        Show(*from);
    }
    if (Top(*from) < 0)
    {
        ScrollTo(m_scroll - std::min({-Top(*from), linesAtOnce * m_line, PageStep()}));
        return *from;
    }
    if (*from == 0)
    {
        return 0;
    }
    const std::size_t next = *from - 1;
    if (Top(next) < 0)
    {
        // Of a row that is taller than the view, the end comes first.
        ScrollTo(m_scroll + std::max(Top(next), std::min(0, Bottom(next) - m_view)));
    }
    return next;
}

// The operator is then on the first row that begins in view, or on the one that fills it; at either end on the last
// one there.
std::size_t TallRows::Page(int direction)
{
    const int before = m_scroll;
    ScrollPages(direction);
    if (m_scroll == before)
    {
        return direction < 0 ? 0 : m_ends.size() - 1;
    }
    const std::size_t top = RowAt(0).value_or(0);
    const bool nextBegins = Top(top) < 0 && top + 1 < m_ends.size() && Top(top + 1) < m_view;
    return nextBegins ? top + 1 : top;
}

} // namespace vellumo::windows
