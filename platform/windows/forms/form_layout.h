// Where the controls of a form stand: in lines from top to bottom, in the form's order. What stretches takes the width
// that is left in its line, what grows takes the height that is left; a last line of nothing but buttons stands at the
// bottom right. Works on measured sizes in pixels, without a window.
#pragma once

#include <windows.h>

#include <cstddef>
#include <vector>

namespace vellumo::windows
{

struct LayoutItem
{
    SIZE size{};            // what it needs
    bool sameLine = false;  // stands beside the item before it
    bool stretches = false; // to the width that is left
    int growth = 0;         // share of the height that is left
    bool isButton = false;
    bool leads = false; // begins a line of a column: all such are as wide as the widest
};

class FormLayout
{
public:
    FormLayout(std::vector<LayoutItem> items, int margin, int gap);

    // The inner size in which everything has what it needs.
    [[nodiscard]] SIZE NeededSize() const;
    // One rectangle an item. In less than the needed height, what grows gives way.
    [[nodiscard]] std::vector<RECT> Place(SIZE inner) const;

private:
    struct Line
    {
        std::size_t first;
        std::size_t end;
        int width;
        int height;
        int stretching;
        int growth;
        bool onlyButtons;
    };

    void PlaceLine(const Line& line, int top, int height, int innerWidth, bool toTheRight,
                   std::vector<RECT>& places) const;

    std::vector<LayoutItem> m_items;
    std::vector<Line> m_lines;
    int m_margin;
    int m_gap;
};

} // namespace vellumo::windows
