#include "simulator/screen/windows/cell_looks.h"

#include "platform/windows/forms/drawing.h"
#include "platform/windows/forms/window_message.h"
#include "platform/windows/system/text.h"

#include <windows.h>
// After windows.h.
#include <commctrl.h>

#include <algorithm>
#include <map>
#include <optional>

namespace vellumo::screen
{
namespace
{

using windows::Send;

// How many pixels have each colour.
using Pixels = std::map<COLORREF, int>;

Pixels PixelsOf(HDC picture, const RECT& area)
{
    Pixels pixels;
    for (int y = area.top; y < area.bottom; ++y)
    {
        for (int x = area.left; x < area.right; ++x)
        {
            ++pixels[GetPixel(picture, x, y)];
        }
    }
    return pixels;
}

// CLR_INVALID when there is none.
COLORREF MostFrequent(const Pixels& pixels)
{
    const auto most = std::max_element(pixels.begin(), pixels.end(),
                                       [](const auto& left, const auto& right) { return left.second < right.second; });
    return most == pixels.end() ? CLR_INVALID : most->first;
}

// Those that remain without a part; empty when they do not hold all of it.
std::optional<Pixels> Without(Pixels pixels, const Pixels& part)
{
    for (const auto& [colour, count] : part)
    {
        const int left = pixels[colour] -= count;
        if (left < 0)
        {
            return std::nullopt;
        }
    }
    std::erase_if(pixels, [](const auto& each) { return each.second == 0; });
    return pixels;
}

// The system's small icon on that background.
Pixels PixelsOf(ui::Image image, HDC screen, COLORREF background)
{
    const auto* const name = image == ui::Image::Error ? IDI_ERROR : IDI_WARNING;
    const int size = GetSystemMetrics(SM_CXSMICON);
    const windows::MemoryPicture picture(screen, size, size);
    const auto icon = static_cast<HICON>(LoadImageW(nullptr, name, IMAGE_ICON, size, size, LR_SHARED));
    const HBRUSH brush = CreateSolidBrush(background);
    DrawIconEx(picture.Context(), 0, 0, icon, size, size, 0, brush, DI_NORMAL);
    DeleteObject(brush);
    return PixelsOf(picture.Context(), {0, 0, size, size});
}

// A selected row is highlighted, while the keyboard is elsewhere only by a quarter.
bool IsHighlight(COLORREF colour)
{
    const COLORREF over = GetSysColor(COLOR_HIGHLIGHT);
    const COLORREF under = GetSysColor(COLOR_WINDOW);
    const auto quarter = [](BYTE highlight, BYTE window) { return (highlight + 3 * window) / 4; };
    return colour == over ||
           colour == RGB(quarter(GetRValue(over), GetRValue(under)), quarter(GetGValue(over), GetGValue(under)),
                         quarter(GetBValue(over), GetBValue(under)));
}

// Empty when it is the system's own.
std::optional<ui::Colour> OwnColour(COLORREF colour, int systems)
{
    if (colour == CLR_INVALID || colour == GetSysColor(systems))
    {
        return std::nullopt;
    }
    return RGB(GetBValue(colour), GetGValue(colour), GetRValue(colour)); // ours are the other way round
}

std::string CellText(HWND list, int row, int column)
{
    std::wstring text(4096, L'\0');
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    const LRESULT length = Send(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    // A list view that holds no texts may answer through a buffer of its own.
    return windows::FromWide(std::wstring_view(item.pszText, static_cast<std::size_t>(length)));
}

} // namespace

RECT CellArea(HWND list, int row, int column)
{
    RECT area{};
    area.top = column;
    area.left = LVIR_BOUNDS;
    Send(list, LVM_GETSUBITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&area));
    if (column == 0) // the bounds of the first cell are those of the whole row
    {
        area.right = area.left + static_cast<LONG>(Send(list, LVM_GETCOLUMNWIDTH));
    }
    return area;
}

ui::Cell ReadCell(HWND list, int row, int column)
{
    ui::Cell cell{CellText(list, row, column)};
    Send(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    UpdateWindow(list);
    const RECT area = CellArea(list, row, column);
    RECT inner{0, 0, area.right - area.left, area.bottom - area.top};
    const HDC screen = GetDC(list);
    const windows::MemoryPicture picture(screen, inner.right, inner.bottom);
    BitBlt(picture.Context(), 0, 0, inner.right, inner.bottom, screen, area.left, area.top, SRCCOPY);
    InflateRect(&inner, -3, -3); // without grid lines and the lines around a selected row
    auto pixels = PixelsOf(picture.Context(), inner);
    // The most frequent colour is the background, the next one the text.
    const COLORREF background = MostFrequent(pixels);
    for (const auto image : {ui::Image::Error, ui::Image::Warning})
    {
        if (auto others = Without(pixels, PixelsOf(image, screen, background)))
        {
            cell.image = image;
            pixels = std::move(*others);
        }
    }
    ReleaseDC(list, screen);
    if (!IsHighlight(background))
    {
        cell.background = OwnColour(background, COLOR_WINDOW);
        pixels.erase(background);
        cell.foreground = OwnColour(MostFrequent(pixels), COLOR_WINDOWTEXT);
    }
    return cell;
}

} // namespace vellumo::screen
