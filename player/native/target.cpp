#include "player/native/native_target.h"

namespace vellumo::player
{

std::unique_ptr<Target> MakeTarget(Operator& anOperator, const std::filesystem::path& folder)
{
    return std::make_unique<NativeTarget>(anOperator, folder);
}

} // namespace vellumo::player
