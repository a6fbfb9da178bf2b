#include "environment/files.h"

#include "host/path.h"

#include <array>
#include <exception>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace vellumo::environment
{

std::string JoinPath(std::string_view folder, std::string_view name)
{
    std::string path(folder);
    if (!path.empty() && !path.ends_with('\\'))
    {
        path += '\\';
    }
    path += name;
    return path;
}

bool FileExists(std::string_view path)
{
    std::error_code error;
    return std::filesystem::is_regular_file(host::NativePath(path), error);
}

bool FolderExists(std::string_view path)
{
    std::error_code error;
    return std::filesystem::is_directory(host::NativePath(path), error);
}

bool CreateFolder(std::string_view path)
{
    std::error_code error;
    std::filesystem::create_directory(host::NativePath(path), error);
    return FolderExists(path);
}

std::optional<std::uintmax_t> FileSize(std::string_view path)
{
    if (!FileExists(path))
    {
        return std::nullopt;
    }
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(host::NativePath(path), error);
    return error ? std::nullopt : std::optional(size);
}

FileReader::FileReader(std::string_view path)
{
    constexpr std::uintmax_t largest = 0xFFFFFFFF;
    const auto size = FileSize(path);
    m_in.open(host::NativePath(path), std::ios::binary);
    if (m_in && size && *size <= largest)
    {
        m_size = static_cast<std::size_t>(*size);
    }
}

std::optional<std::size_t> FileReader::Read(char* to, std::size_t count)
{
    m_in.read(to, static_cast<std::streamsize>(count));
    return m_in.bad() ? std::nullopt : std::optional(static_cast<std::size_t>(m_in.gcount()));
}

std::optional<std::string> ReadFile(std::string_view path)
{
    try
    {
        FileReader file(path);
        if (!file.Size())
        {
            return std::nullopt;
        }
        // Piece by piece: filling a large text with zeros first, for the system to write over, takes half as long
        // again.
        std::string bytes;
        bytes.reserve(*file.Size());
        std::array<char, 65536> piece;
        for (;;)
        {
            const auto count = file.Read(piece.data(), piece.size());
            if (!count)
            {
                return std::nullopt;
            }
            bytes.append(piece.data(), *count);
            if (*count < piece.size())
            {
                return bytes;
            }
        }
    }
    catch (const std::exception&)
    { // no memory for it
        return std::nullopt;
    }
}

bool WriteFile(std::string_view path, std::string_view bytes)
{
    std::ofstream out(host::NativePath(path), std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    return !out.fail();
}

} // namespace vellumo::environment
