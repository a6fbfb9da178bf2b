#include "platform/windows/forms/cell_painter.h"

#include "platform/windows/forms/abridged.h"
#include "platform/windows/forms/system_look.h"

#include <algorithm>

namespace vellumo::windows
{
namespace
{

constexpr int paddingAcross = 5; // at 96 dots an inch
constexpr int paddingAbove = 3;  // of wrapped texts, and below
constexpr int gridLine = 1;      // pixels
constexpr UINT wrapped = DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX;
constexpr UINT onOneLine = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;

COLORREF ToColorRef(ui::Colour colour)
{
    return RGB((colour >> 16u) & 0xFFu, (colour >> 8u) & 0xFFu, colour & 0xFFu);
}

// A quarter of the first colour over the second.
COLORREF Mixed(COLORREF over, COLORREF under)
{
    const auto mix = [](int a, int b) { return (a + 3 * b) / 4; };
    return RGB(mix(GetRValue(over), GetRValue(under)), mix(GetGValue(over), GetGValue(under)),
               mix(GetBValue(over), GetBValue(under)));
}

void Fill(HDC context, const RECT& area, COLORREF colour)
{
    SetBkColor(context, colour);
    ExtTextOutW(context, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr);
}

struct CellColours
{
    COLORREF background;
    COLORREF text;
};

// Ours or the system's, never one of each: they would not be made for each other. The selected row stands out also
// while the keyboard is elsewhere: it is the one that the next button works on. A coloured text keeps its colours
// there.
CellColours ColoursOf(const ui::Cell& cell, const CellLook& look)
{
    constexpr ui::Colour white = 0xFFFFFF;
    constexpr ui::Colour black = 0x000000;
    const bool ownFit = look.ownColours;
    if (look.selected && look.keyboardHere && !(ownFit && cell.foreground))
    {
        return {GetSysColor(COLOR_HIGHLIGHT), GetSysColor(COLOR_HIGHLIGHTTEXT)};
    }
    if (ownFit && (cell.foreground || cell.background))
    {
        return {ToColorRef(cell.background.value_or(white)), ToColorRef(cell.foreground.value_or(black))};
    }
    if (ownFit && look.selected)
    {
        return {Mixed(GetSysColor(COLOR_HIGHLIGHT), GetSysColor(COLOR_WINDOW)), ToColorRef(black)};
    }
    return {GetSysColor(COLOR_WINDOW), GetSysColor(COLOR_WINDOWTEXT)};
}

// Line ends at the end would make the row higher for nothing.
std::wstring WithoutLastLineEnds(std::wstring text)
{
    text.erase(text.find_last_not_of(L"\r\n") + 1);
    return text;
}

} // namespace

CellLook LookOf(HWND grid) noexcept
{
    return {.keyboardHere = GetFocus() == grid, .ownColours = OwnColoursFit()};
}

int CellPainter::ImageRoom(const ui::Cell& cell) const
{
    return cell.image == ui::Image::None ? 0 : m_surface.ImageSize() + m_surface.Pixels(paddingAcross);
}

int CellPainter::WrappedHeight(const ui::Cell& cell, int width) const
{
    const int room = width - 2 * m_surface.Pixels(paddingAcross) - ImageRoom(cell);
    const int text = m_surface.TextHeight(WithoutLastLineEnds(Abridged(cell.text)), cell.strong, room, wrapped);
    const int image = cell.image == ui::Image::None ? 0 : m_surface.ImageSize();
    return std::max({text, image, m_surface.LineHeight()}) + 2 * m_surface.Pixels(paddingAbove) + gridLine;
}

// The selected row has lines in the colour of the selection, above and below.
void CellPainter::Draw(HDC context, const ui::Cell& cell, RECT area, const CellLook& look) const
{
    const CellColours colours = ColoursOf(cell, look);
    Fill(context, area, GridLineColour());
    area.bottom -= gridLine;
    // Wrapped texts fill it: a pixel less, and the system leaves out the last line.
    RECT inside = area;
    InflateRect(&inside, -m_surface.Pixels(paddingAcross), look.wraps ? -m_surface.Pixels(paddingAbove) : 0);
    if (look.selected)
    {
        Fill(context, area, GetSysColor(COLOR_HIGHLIGHT));
        InflateRect(&area, 0, -m_surface.Pixels(look.ownColours ? 1 : 2));
    }
    else
    {
        area.right -= gridLine;
    }
    Fill(context, area, colours.background);
    DrawImage(context, cell.image, inside, look.wraps);
    inside.left += ImageRoom(cell);
    const std::wstring wide = look.wraps ? WithoutLastLineEnds(Abridged(cell.text)) : Abridged(cell.text);
    const HGDIOBJ fontBefore = SelectObject(context, m_surface.FontFor(cell.strong));
    SetTextColor(context, colours.text);
    SetBkMode(context, TRANSPARENT);
    DrawTextW(context, wide.c_str(), static_cast<int>(wide.size()), &inside, look.wraps ? wrapped : onOneLine);
    SelectObject(context, fontBefore);
}

// Beside a wrapped text it stands on the first line.
void CellPainter::DrawImage(HDC context, ui::Image image, const RECT& area, bool wraps) const
{
    if (image == ui::Image::None)
    {
        return;
    }
    const int size = m_surface.ImageSize();
    const int above = wraps ? 0 : (area.bottom - area.top - size) / 2;
    DrawIconEx(context, area.left, area.top + above, m_surface.IconFor(image), size, size, 0, nullptr, DI_NORMAL);
}

} // namespace vellumo::windows
