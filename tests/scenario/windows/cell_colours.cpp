#include "tests/scenario/windows/cell_colours.h"

#include <windows.h>
// After windows.h.
#include <commctrl.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <vector>

namespace vellumo::scenario
{
namespace
{

// The picture of a part of a window, a colour (0xRRGGBB) a pixel.
std::vector<ui::Colour> ReadPixels(HWND window, const RECT& area)
{
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    if (width <= 0 || height <= 0)
    {
        return {};
    }
    BITMAPINFO format{};
    format.bmiHeader.biSize = sizeof format.bmiHeader;
    format.bmiHeader.biWidth = width;
    format.bmiHeader.biHeight = height;
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HDC source = GetDC(window);
    const HDC copy = CreateCompatibleDC(source);
    const HBITMAP bitmap = CreateDIBSection(source, &format, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ before = SelectObject(copy, bitmap);
    BitBlt(copy, 0, 0, width, height, source, area.left, area.top, SRCCOPY);
    GdiFlush();
    const auto* const first = static_cast<const std::uint32_t*>(bits);
    std::vector<ui::Colour> pixels(first, first + width * height);
    for (ui::Colour& pixel : pixels)
    {
        pixel &= 0xFFFFFFu;
    }
    SelectObject(copy, before);
    DeleteObject(bitmap);
    DeleteDC(copy);
    ReleaseDC(window, source);
    return pixels;
}

ui::Colour SystemColour(int index)
{
    const COLORREF colour = GetSysColor(index);
    return static_cast<ui::Colour>(GetRValue(colour)) << 16u | static_cast<ui::Colour>(GetGValue(colour)) << 8u |
           static_cast<ui::Colour>(GetBValue(colour));
}

// The colour of a selected row while the keyboard is elsewhere: a quarter of the highlight over the window.
ui::Colour PaleHighlight()
{
    ui::Colour mixed = 0;
    for (const unsigned shift : {0u, 8u, 16u})
    {
        const ui::Colour over = SystemColour(COLOR_HIGHLIGHT) >> shift & 0xFFu;
        const ui::Colour under = SystemColour(COLOR_WINDOW) >> shift & 0xFFu;
        mixed |= (over + 3 * under) / 4 << shift;
    }
    return mixed;
}

} // namespace

RECT CellArea(HWND list, int row, int column)
{
    RECT area{};
    area.top = column;
    area.left = LVIR_BOUNDS;
    SendMessageW(list, LVM_GETSUBITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&area));
    if (column == 0) // the bounds of the first cell are those of the whole row
    {
        area.right = area.left + static_cast<LONG>(SendMessageW(list, LVM_GETCOLUMNWIDTH, 0, 0));
    }
    return area;
}

CellColours ReadCellColours(HWND list, int row, int column)
{
    SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    UpdateWindow(list);
    RECT area = CellArea(list, row, column);
    InflateRect(&area, -3, -3); // without grid lines and the lines around a selected row
    std::map<ui::Colour, std::size_t> counts;
    for (const ui::Colour pixel : ReadPixels(list, area))
    {
        ++counts[pixel];
    }
    // The most frequent colour is the background, the next one the text.
    std::vector<std::pair<std::size_t, ui::Colour>> ranked;
    for (const auto& [colour, count] : counts)
    {
        ranked.emplace_back(count, colour);
    }
    std::sort(ranked.rbegin(), ranked.rend());
    CellColours colours;
    if (ranked.empty() || ranked[0].second == SystemColour(COLOR_HIGHLIGHT) || ranked[0].second == PaleHighlight())
    {
        return colours;
    }
    if (ranked[0].second != SystemColour(COLOR_WINDOW))
    {
        colours.background = ranked[0].second;
    }
    if (ranked.size() > 1 && ranked[1].second != SystemColour(COLOR_WINDOWTEXT))
    {
        colours.foreground = ranked[1].second;
    }
    return colours;
}

} // namespace vellumo::scenario
