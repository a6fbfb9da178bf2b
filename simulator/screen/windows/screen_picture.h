// A picture of the part of the screen where this process has windows, as the operator sees it, frames and title bars
// included, as a PNG file.
#pragma once

#include <filesystem>

namespace vellumo::screen
{

// False when there is no window or the file cannot be written.
[[nodiscard]] bool SaveScreenPicture(const std::filesystem::path& file);

} // namespace vellumo::screen
