#include "platform/windows/grid_columns.h"

#include <algorithm>

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

} // namespace vellumo::windows
