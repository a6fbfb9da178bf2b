#include "platform/windows/forms/grid_parts.h"

#include "platform/windows/forms/abridged.h"

#include "platform/windows/forms/clipboard.h"
#include "platform/windows/forms/window_message.h"
#include "platform/windows/system/text.h"

#include <algorithm>
#include <cwchar>

namespace vellumo::windows
{
namespace
{

std::wstring OnOneLine(std::wstring text)
{
    for (std::size_t end = text.find(L"\r\n"); end != std::wstring::npos; end = text.find(L"\r\n"))
    {
        text.replace(end, 2, L" ");
    }
    return text;
}

} // namespace

std::vector<int> FittedColumns(const std::vector<ui::Column>& columns, int firstWidth, int width,
                               const Surface& surface)
{
    std::vector<int> widths = {firstWidth};
    int left = width - firstWidth;
    int designed = 0;
    for (std::size_t i = 1; i < columns.size(); ++i)
    {
        designed += columns[i].width;
    }
    for (std::size_t i = 1; i < columns.size(); ++i)
    {
        const int share = MulDiv(left, columns[i].width, designed); // of what those before it left
        widths.push_back(std::max(share, surface.Pixels(60)));
        left -= share;
        designed -= columns[i].width;
    }
    return widths;
}

int HeadingHeight(const ui::Grid& grid, const Surface& surface)
{
    return grid.text.empty() ? 0 : surface.LineHeight() + surface.Pixels(3);
}

const ui::Cell* CellAt(const ui::Grid& grid, std::size_t row, int column)
{
    const auto index = static_cast<std::size_t>(column);
    return column >= 0 && row < grid.rows.size() && index < grid.rows[row].size() ? &grid.rows[row][index] : nullptr;
}

RECT CellPlace(HWND list, std::size_t row, std::size_t column)
{
    RECT place{};
    place.top = static_cast<LONG>(column);
    place.left = LVIR_BOUNDS;
    Send(list, LVM_GETSUBITEMRECT, row, reinterpret_cast<LPARAM>(&place));
    if (column == 0) // the bounds of the first cell are those of the whole row
    {
        place.right = place.left + static_cast<LONG>(Send(list, LVM_GETCOLUMNWIDTH, 0));
    }
    return place;
}

std::wstring WordFor(ui::Image image)
{
    switch (image)
    {
    case ui::Image::Error:
        return L"Errore";
    case ui::Image::Warning:
        return L"Avviso";
    case ui::Image::None:
        break;
    }
    return L"";
}

std::wstring SpokenCell(const ui::Cell& cell)
{
    const std::wstring word = WordFor(cell.image);
    const std::wstring text = Abridged(cell.text);
    return word + (word.empty() || text.empty() ? L"" : L": ") + text;
}

std::wstring SpokenRow(const ui::Grid& grid, std::size_t row)
{
    std::wstring spoken;
    for (std::size_t column = 0; column < grid.rows[row].size() && column < grid.columns.size(); ++column)
    {
        const std::wstring caption = ToWide(grid.columns[column].caption);
        const std::wstring text = SpokenCell(grid.rows[row][column]);
        if (!text.empty())
        {
            spoken += (spoken.empty() ? L"" : L"; ") + caption + (caption.empty() ? L"" : L": ") + text;
        }
    }
    return spoken;
}

void CopyOnKey(const ui::Grid& grid, WPARAM key, HWND owner)
{
    if (key != L'C' || GetKeyState(VK_CONTROL) >= 0 || !grid.selected || *grid.selected >= grid.rows.size())
    {
        return;
    }
    std::wstring line;
    for (const ui::Cell& cell : grid.rows[*grid.selected])
    {
        line += (&cell == grid.rows[*grid.selected].data() ? L"" : L"\t") + OnOneLine(SpokenCell(cell));
    }
    CopyText(line + L"\r\n", owner);
}

void ShowKeyboard(HDC context, const ui::Grid& grid, HWND list, RECT rows)
{
    if (GetFocus() == list && !grid.selected)
    {
        InflateRect(&rows, -1, -1);
        SetTextColor(context, GetSysColor(COLOR_WINDOWTEXT)); // of the dots
        SetBkColor(context, GetSysColor(COLOR_WINDOW));
        DrawFocusRect(context, &rows);
    }
}

std::size_t GiveText(const ui::Cell* cell, LVITEMW& item)
{
    if (cell == nullptr || item.cchTextMax < 1)
    {
        return 0;
    }
    const std::wstring text = Abridged(cell->text);
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(item.cchTextMax) - 1);
    std::wmemcpy(item.pszText, text.c_str(), length);
    item.pszText[length] = L'\0';
    return length;
}

} // namespace vellumo::windows
