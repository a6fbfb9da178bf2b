#include "simulator/norda/platform.h"

namespace vellumo::norda
{

std::filesystem::path ProgramFolder()
{
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

std::string DriverPath(const std::filesystem::path& file)
{
    return std::filesystem::absolute(file).string();
}

} // namespace vellumo::norda
