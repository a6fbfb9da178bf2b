// The library's windows in this program: what the library does in them counts as its work, what the operator does does
// not. A window may fail to open.
#pragma once

#include "ui/desktop.h"

#include <memory>

namespace vellumo::torture
{

[[nodiscard]] std::unique_ptr<ui::Desktop> Tortured(std::unique_ptr<ui::Desktop> desktop);

} // namespace vellumo::torture
