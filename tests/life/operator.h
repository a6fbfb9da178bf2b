// The doctor in front of the library's windows: confirms what it asks, and presses in the window of the results what
// the plan says.
#pragma once

#include "tests/life/host.h"
#include "ui/desktop.h"

#include <memory>

namespace vellumo::life
{

[[nodiscard]] std::unique_ptr<ui::Desktop> MakeDesktop(World& world);

} // namespace vellumo::life
