// Paths inside the library are Windows path texts in UTF-8, joined with "\" on every platform. Only here do they
// become paths of the platform: as they are on Windows, with "/" for "\" elsewhere.
#pragma once

#include <filesystem>
#include <string_view>

namespace vellumo::host
{

// Defined by the platform.
[[nodiscard]] std::filesystem::path NativePath(std::string_view windowsPath);

} // namespace vellumo::host
