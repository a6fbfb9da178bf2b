#include "player/target.h"

#include "simulator/norda/windows/workstation.h"
#include "simulator/screen/windows/real_screen.h"

namespace vellumo::player
{

Target MakeTarget(screen::Operator& anOperator, const std::filesystem::path&)
{
    return {std::make_unique<screen::RealScreen>(anOperator), std::make_unique<norda::WindowsWorkstation>()};
}

} // namespace vellumo::player
