// What the folder of traces asks of the system, defined by the platform. Paths are Windows path texts (`host/path.h`).
// Nothing here faults but for lack of memory.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::host
{

// A file that one owner has open: whoever else wants it is refused, in this process as in any other, and when the owner
// ends, however that comes, the file is free. Others may read it meanwhile.
class ExclusiveFile
{
public:
    // Makes the file. Null when there is one of that name, or it cannot be made.
    [[nodiscard]] static std::unique_ptr<ExclusiveFile> Create(std::string_view path);
    // Takes a file that nobody owns. Null when there is none, somebody has it, or this user may not write and delete
    // it.
    [[nodiscard]] static std::unique_ptr<ExclusiveFile> Take(std::string_view path);

    virtual ~ExclusiveFile() = default;

    // All bytes; empty when one of them cannot be read.
    [[nodiscard]] virtual std::optional<std::string> Read() = 0;
    // The bytes are on disk when these return True.
    [[nodiscard]] virtual bool Append(std::string_view bytes) = 0;
    [[nodiscard]] virtual bool Overwrite(std::uint64_t position, char byte) = 0;
    // Effective at once for whoever looks for the file.
    virtual void Delete() = 0;
};

// Adds to the end of a file, making it when there is none. What several processes add at the same time stands one
// behind the other.
[[nodiscard]] bool AppendShared(std::string_view path, std::string_view bytes);

// What lies in the folder, by its names, as far as it can be read. The standard library's way to list a folder ends the
// program when there is no memory for it.
[[nodiscard]] std::vector<std::string> NamesIn(std::string_view folder);

// "" when the system does not tell.
[[nodiscard]] std::string MachineName();

} // namespace vellumo::host
