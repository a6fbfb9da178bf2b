#include "platform/native/console_desktop.h"
#include "simulator/norda/native/workstation.h"
#include "simulator/norda/program/platform_workstation.h"

#include <iostream>

namespace vellumo::norda
{

std::unique_ptr<Workstation> MakeWorkstation(const std::filesystem::path& folder)
{
    return std::make_unique<NativeWorkstation>(
        folder, [] { return std::make_unique<native::ConsoleDesktop>(std::cin, std::cout); });
}

} // namespace vellumo::norda
