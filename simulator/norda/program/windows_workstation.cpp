#include "simulator/norda/program/platform_workstation.h"
#include "simulator/norda/windows/workstation.h"

namespace vellumo::norda
{

// Texts go to the console in UTF-8, as the program keeps them.
std::unique_ptr<Workstation> MakeWorkstation(const std::filesystem::path&)
{
    SetConsoleOutputCP(CP_UTF8);
    SetConsoleCP(CP_UTF8);
    return std::make_unique<WindowsWorkstation>();
}

} // namespace vellumo::norda
