#include "platform/windows/forms/form_layout.h"

#include <algorithm>

namespace vellumo::windows
{

FormLayout::FormLayout(std::vector<LayoutItem> items, int margin, int gap)
    : m_items(std::move(items))
    , m_margin(margin)
    , m_gap(gap)
{
    LONG widestLead = 0;
    for (const LayoutItem& item : m_items)
    {
        widestLead = std::max(widestLead, item.leads ? item.size.cx : 0);
    }
    for (LayoutItem& item : m_items)
    {
        item.size.cx = item.leads ? widestLead : item.size.cx;
    }
    for (std::size_t i = 0; i < m_items.size(); ++i)
    {
        const LayoutItem& item = m_items[i];
        if (!item.sameLine || m_lines.empty())
        {
            m_lines.push_back({i, i, -m_gap, 0, 0, 0, true});
        }
        Line& line = m_lines.back();
        line.end = i + 1;
        line.width += m_gap + item.size.cx;
        line.height = std::max<int>(line.height, item.size.cy);
        line.stretching += item.stretches ? 1 : 0;
        line.growth = std::max(line.growth, item.growth);
        line.onlyButtons = line.onlyButtons && item.isButton;
    }
}

SIZE FormLayout::NeededSize() const
{
    SIZE needed{0, -m_gap};
    for (const Line& line : m_lines)
    {
        needed.cx = std::max<LONG>(needed.cx, line.width);
        needed.cy += m_gap + line.height;
    }
    return {needed.cx + 2 * m_margin, needed.cy + 2 * m_margin};
}

std::vector<RECT> FormLayout::Place(SIZE inner) const
{
    std::vector<RECT> places(m_items.size());
    int left = inner.cy - NeededSize().cy;
    int growth = 0;
    for (const Line& line : m_lines)
    {
        growth += line.growth;
    }
    int top = m_margin;
    for (const Line& line : m_lines)
    {
        int height = line.height;
        if (line.growth > 0)
        {
            // What is left is shared out line by line, so that rounding loses nothing.
            const int share = left * line.growth / growth;
            height = std::max(0, height + share);
            left -= share;
            growth -= line.growth;
        }
        const bool closing = &line == &m_lines.back() && line.onlyButtons;
        if (closing)
        {
            top = std::max<int>(top, inner.cy - m_margin - height);
        }
        PlaceLine(line, top, height, inner.cx - 2 * m_margin, closing, places);
        top += height + m_gap;
    }
    return places;
}

void FormLayout::PlaceLine(const Line& line, int top, int height, int innerWidth, bool toTheRight,
                           std::vector<RECT>& places) const
{
    const int left = innerWidth - line.width;
    int x = m_margin + (toTheRight ? std::max(0, left) : 0);
    int stretching = line.stretching;
    int toShare = left;
    for (std::size_t i = line.first; i < line.end; ++i)
    {
        const LayoutItem& item = m_items[i];
        int width = item.size.cx;
        if (item.stretches)
        {
            const int share = toShare / stretching--;
            width = std::max(0, width + share);
            toShare -= share;
        }
        const int itemHeight = item.growth > 0 ? height : item.size.cy;
        const int y = top + (height - itemHeight) / 2;
        places[i] = {x, y, x + width, y + itemHeight};
        x += width + m_gap;
    }
}

} // namespace vellumo::windows
