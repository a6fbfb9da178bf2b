#include "player/target.h"

#include "simulator/norda/native/workstation.h"
#include "simulator/screen/native/form_window.h"

namespace vellumo::player
{

Target MakeTarget(screen::Operator& anOperator, const std::filesystem::path& folder)
{
    auto screen = std::make_unique<screen::FormScreen>(anOperator);
    auto workstation = std::make_unique<norda::NativeWorkstation>(
        folder, [&shown = *screen] { return std::make_unique<screen::ScriptedDesktop>(shown); });
    return {std::move(screen), std::move(workstation)};
}

} // namespace vellumo::player
