#include "player/windows/cell_looks.h"

#include <windows.h>
// After windows.h.
#include <commctrl.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <vector>

namespace vellumo::player
{
namespace
{

// A part of a window, or what was drawn for comparison: a colour (0xRRGGBB) a pixel.
class Picture
{
public:
    Picture(int width, int height)
        : m_width(std::max(0, width))
        , m_height(std::max(0, height))
    {
        BITMAPINFO format{};
        format.bmiHeader.biSize = sizeof format.bmiHeader;
        format.bmiHeader.biWidth = std::max(1, m_width);
        format.bmiHeader.biHeight = -std::max(1, m_height); // the first line on top
        format.bmiHeader.biPlanes = 1;
        format.bmiHeader.biBitCount = 32;
        m_bitmap =
            CreateDIBSection(m_context, &format, DIB_RGB_COLORS, reinterpret_cast<void**>(&m_pixels), nullptr, 0);
        m_before = SelectObject(m_context, m_bitmap);
    }
    ~Picture()
    {
        SelectObject(m_context, m_before);
        DeleteObject(m_bitmap);
        DeleteDC(m_context);
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    [[nodiscard]] HDC Context() const noexcept { return m_context; }
    [[nodiscard]] int Width() const noexcept { return m_width; }
    [[nodiscard]] int Height() const noexcept { return m_height; }
    [[nodiscard]] ui::Colour At(int x, int y) const { return m_pixels[y * m_width + x] & 0xFFFFFFu; }
    // Holds this one from there on.
    [[nodiscard]] bool Holds(const Picture& other, int left, int top) const
    {
        for (int y = 0; y < other.Height(); ++y)
        {
            for (int x = 0; x < other.Width(); ++x)
            {
                if (At(left + x, top + y) != other.At(x, y))
                {
                    return false;
                }
            }
        }
        return true;
    }

private:
    int m_width;
    int m_height;
    HDC m_context = CreateCompatibleDC(nullptr);
    HBITMAP m_bitmap = nullptr;
    HGDIOBJ m_before = nullptr;
    std::uint32_t* m_pixels = nullptr;
};

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

// The colours inside `area` but not inside `without`, the most frequent first.
std::vector<ui::Colour> Ranked(const Picture& picture, const RECT& area, const RECT& without)
{
    std::map<ui::Colour, std::size_t> counts;
    for (int y = area.top; y < area.bottom; ++y)
    {
        for (int x = area.left; x < area.right; ++x)
        {
            if (PtInRect(&without, {x, y}) == FALSE)
            {
                ++counts[picture.At(x, y)];
            }
        }
    }
    std::vector<std::pair<std::size_t, ui::Colour>> byCount;
    for (const auto& [colour, count] : counts)
    {
        byCount.emplace_back(count, colour);
    }
    std::sort(byCount.rbegin(), byCount.rend());
    std::vector<ui::Colour> colours;
    for (const auto& [count, colour] : byCount)
    {
        colours.push_back(colour);
    }
    return colours;
}

struct ImageName
{
    ui::Image image;
    const wchar_t* icon;
};

const std::array<ImageName, 2> images = {{{ui::Image::Error, IDI_ERROR}, {ui::Image::Warning, IDI_WARNING}}};

// One of the system's small icons, pixel for pixel, wherever it stands in the picture.
struct FoundImage
{
    ui::Image image = ui::Image::None;
    RECT place{};
};

FoundImage FindImage(const Picture& picture, ui::Colour background)
{
    const int size = GetSystemMetrics(SM_CXSMICON);
    const HBRUSH brush = CreateSolidBrush(RGB(background >> 16u & 0xFFu, background >> 8u & 0xFFu, background & 0xFFu));
    FoundImage found;
    for (const auto& [image, icon] : images)
    {
        const Picture sample(size, size);
        const auto handle = static_cast<HICON>(LoadImageW(nullptr, icon, IMAGE_ICON, size, size, LR_SHARED));
        DrawIconEx(sample.Context(), 0, 0, handle, size, size, 0, brush, DI_NORMAL);
        GdiFlush();
        for (int y = 0; y + size <= picture.Height(); ++y)
        {
            for (int x = 0; x + size <= picture.Width(); ++x)
            {
                if (picture.Holds(sample, x, y))
                {
                    found = {image, {x, y, x + size, y + size}};
                }
            }
        }
    }
    DeleteObject(brush);
    return found;
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

CellLooks ReadCellLooks(HWND list, int row, int column)
{
    SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    UpdateWindow(list);
    const RECT area = CellArea(list, row, column);
    const Picture picture(area.right - area.left, area.bottom - area.top);
    const HDC source = GetDC(list);
    BitBlt(picture.Context(), 0, 0, picture.Width(), picture.Height(), source, area.left, area.top, SRCCOPY);
    GdiFlush();
    ReleaseDC(list, source);

    RECT inner{0, 0, picture.Width(), picture.Height()};
    InflateRect(&inner, -3, -3); // without grid lines and the lines around a selected row
    CellLooks looks;
    auto ranked = Ranked(picture, inner, {});
    if (ranked.empty())
    {
        return looks;
    }
    const FoundImage found = FindImage(picture, ranked[0]);
    looks.image = found.image;
    ranked = Ranked(picture, inner, found.place);
    // The most frequent colour is the background, the next one the text.
    if (ranked.empty() || ranked[0] == SystemColour(COLOR_HIGHLIGHT) || ranked[0] == PaleHighlight())
    {
        return looks;
    }
    if (ranked[0] != SystemColour(COLOR_WINDOW))
    {
        looks.background = ranked[0];
    }
    if (ranked.size() > 1 && ranked[1] != SystemColour(COLOR_WINDOWTEXT))
    {
        looks.foreground = ranked[1];
    }
    return looks;
}

} // namespace vellumo::player
