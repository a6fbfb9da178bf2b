#include "host/path.h"

#include "platform/windows/text.h"

namespace vellumo::host
{

std::filesystem::path NativePath(std::string_view windowsPath)
{
    return {windows::ToWide(windowsPath)};
}

} // namespace vellumo::host
