#include "platform/windows/forms/grid_parts.h"

#include "platform/windows/forms/abridged.h"

#include <algorithm>
#include <cwchar>

namespace vellumo::windows
{

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
