// Files as the SISS client keeps them: 8-bit texts (Windows-1252) with lines ended by CR LF.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace vellumo::norda
{

// `text` is UTF-8 with lines ended by LF; characters that Windows-1252 does not have become "?".
void WriteAnsiFile(const std::filesystem::path& file, std::string_view text);
// The whole file as UTF-8; line ends as they are. Faults when it cannot be read.
[[nodiscard]] std::string ReadAnsiFile(const std::filesystem::path& file);

} // namespace vellumo::norda
