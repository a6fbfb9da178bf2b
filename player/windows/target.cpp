#include "player/windows/windows_target.h"

namespace vellumo::player
{

std::unique_ptr<Target> MakeTarget(Operator& anOperator, const std::filesystem::path&)
{
    return std::make_unique<WindowsTarget>(anOperator);
}

} // namespace vellumo::player
