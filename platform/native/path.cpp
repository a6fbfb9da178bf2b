#include "host/path.h"

#include <algorithm>
#include <string>

namespace vellumo::host
{

std::filesystem::path NativePath(std::string_view windowsPath)
{
    std::string path(windowsPath);
    std::ranges::replace(path, '\\', '/');
    return path;
}

} // namespace vellumo::host
