// Files and folders by Windows path text (UTF-8, joined with "\"). What cannot be done is said by what is returned;
// nothing here faults but for lack of memory for the path itself.
#pragma once

#include <cstdint>
#include <fstream>
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

// Reads a file from its beginning, piece by piece, for whoever looks at what has come before the rest does.
class FileReader
{
public:
    explicit FileReader(std::string_view path);

    // In bytes, when it was opened; empty when it could not be, or has more than 4 GB.
    [[nodiscard]] std::optional<std::size_t> Size() const noexcept { return m_size; }
    // How many bytes were put to `to`, fewer than `count` only at the end of the file; empty when they cannot be read.
    [[nodiscard]] std::optional<std::size_t> Read(char* to, std::size_t count);

private:
    std::optional<std::size_t> m_size;
    std::ifstream m_in;
};

// All bytes of the file; empty when it cannot be opened or read, has more than 4 GB or does not fit into the memory.
[[nodiscard]] std::optional<std::string> ReadFile(std::string_view path);

// Creates or overwrites. False when not all could be written.
bool WriteFile(std::string_view path, std::string_view bytes);

} // namespace vellumo::environment
