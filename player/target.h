// What differs between the targets on which scenarios run: the workstation on which a provider is created, and the
// screen that shows its windows to the operator.
#pragma once

#include "simulator/norda/workstation.h"
#include "simulator/screen/screen.h"

#include <filesystem>
#include <memory>

namespace vellumo::player
{

struct Target
{
    std::unique_ptr<screen::Screen> screen;
    std::unique_ptr<norda::Workstation> workstation;
};

// Each target's build defines this. `folder` is an empty folder of this run, where the target may keep its own files
// (natively the settings file). Windows that wait for input go to `anOperator`.
[[nodiscard]] Target MakeTarget(screen::Operator& anOperator, const std::filesystem::path& folder);

} // namespace vellumo::player
