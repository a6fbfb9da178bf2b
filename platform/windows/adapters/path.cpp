#include "host/path.h"

#include "platform/windows/system/text.h"

namespace vellumo::host
{

std::filesystem::path NativePath(std::string_view windowsPath)
{
    return {windows::ToWide(windowsPath)};
}

} // namespace vellumo::host
