// How the columns of a grid share its width.
#pragma once

#include "platform/windows/surface.h"
#include "ui/controls.h"

#include <vector>

namespace vellumo::windows
{

// Widths in pixels: the first column keeps its own, the others share the rest in proportion to their design.
[[nodiscard]] std::vector<int> FittedColumns(const std::vector<ui::Column>& columns, int firstWidth, int width,
                                             const Surface& surface);

} // namespace vellumo::windows
