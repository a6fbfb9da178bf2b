// Files and folders by Windows path text (UTF-8, joined with "\"). What cannot be done is said by what is returned;
// nothing here faults but for lack of memory for the path itself.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vellumo::environment
{

// One "\" between the two; an empty folder gives the name alone.
[[nodiscard]] std::string JoinPath(std::string_view folder, std::string_view name);

[[nodiscard]] bool FileExists(std::string_view path); // a regular file
[[nodiscard]] bool FolderExists(std::string_view path);

// True when the folder is there afterwards. Creates one level only.
bool CreateFolder(std::string_view path);

// In bytes; empty when there is no such regular file.
[[nodiscard]] std::optional<std::uintmax_t> FileSize(std::string_view path);

// All bytes of the file; empty when it cannot be opened or read, has more than 4 GB or does not fit into the memory.
[[nodiscard]] std::optional<std::string> ReadFile(std::string_view path);

// Creates or overwrites. False when not all could be written.
bool WriteFile(std::string_view path, std::string_view bytes);

} // namespace vellumo::environment
