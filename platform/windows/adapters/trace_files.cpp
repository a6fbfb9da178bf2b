#include "host/trace_files.h"

#include "host/path.h"
#include "platform/windows/system/text.h"

#include <windows.h>

#include <array>
#include <utility>

namespace vellumo::host
{
namespace
{

class Handle
{
public:
    Handle(std::string_view path, DWORD access, DWORD share, DWORD disposition)
        : m_file(CreateFileW(NativePath(path).c_str(), access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL,
                             nullptr))
    {
    }
    Handle(Handle&& other) noexcept
        : m_file(std::exchange(other.m_file, INVALID_HANDLE_VALUE))
    {
    }
    Handle& operator=(Handle&&) = delete;
    ~Handle()
    {
        if (IsOpen())
        {
            CloseHandle(m_file);
        }
    }

    [[nodiscard]] bool IsOpen() const noexcept { return m_file != INVALID_HANDLE_VALUE; }
    [[nodiscard]] HANDLE Get() const noexcept { return m_file; }

    [[nodiscard]] bool Write(std::string_view bytes) const
    {
        DWORD written = 0;
        return WriteFile(m_file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
               written == bytes.size();
    }
    [[nodiscard]] bool MoveTo(std::uint64_t position, DWORD from) const
    {
        LARGE_INTEGER distance;
        distance.QuadPart = static_cast<LONGLONG>(position);
        return SetFilePointerEx(m_file, distance, nullptr, from) != FALSE;
    }

private:
    HANDLE m_file;
};

class UnsharedFile final : public ExclusiveFile
{
public:
    UnsharedFile(Handle file, std::string_view path)
        : m_file(std::move(file))
        , m_path(NativePath(path))
    {
    }

    std::optional<std::string> Read() override
    {
        std::string bytes;
        std::array<char, 4096> piece;
        DWORD count = 0;
        bool isRead = m_file.MoveTo(0, FILE_BEGIN);
        do
        {
            isRead = isRead &&
                     ReadFile(m_file.Get(), piece.data(), static_cast<DWORD>(piece.size()), &count, nullptr) != FALSE;
            bytes.append(piece.data(), isRead ? count : 0);
        } while (isRead && count != 0);
        return isRead ? std::optional(std::move(bytes)) : std::nullopt;
    }
    bool Append(std::string_view bytes) override
    {
        return m_file.MoveTo(0, FILE_END) && m_file.Write(bytes) && FlushFileBuffers(m_file.Get());
    }
    bool Overwrite(std::uint64_t position, char byte) override
    {
        return m_file.MoveTo(position, FILE_BEGIN) && m_file.Write({&byte, 1}) && FlushFileBuffers(m_file.Get());
    }
    void Delete() override { DeleteFileW(m_path.c_str()); }

private:
    Handle m_file;
    std::filesystem::path m_path;
};

// Others may read, for a look, and delete, which only its owner asks for: then it is gone when the owner lets it go.
// The right to delete is not taken along: programs that look into a file do not share it.
std::unique_ptr<ExclusiveFile> Open(std::string_view path, DWORD disposition)
{
    Handle file(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, disposition);
    return file.IsOpen() ? std::make_unique<UnsharedFile>(std::move(file), path) : nullptr;
}

} // namespace

std::unique_ptr<ExclusiveFile> ExclusiveFile::Create(std::string_view path)
{
    return Open(path, CREATE_NEW);
}

std::unique_ptr<ExclusiveFile> ExclusiveFile::Take(std::string_view path)
{
    const bool mayDelete =
        Handle(path, DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING).IsOpen();
    return mayDelete ? Open(path, OPEN_EXISTING) : nullptr;
}

bool AppendShared(std::string_view path, std::string_view bytes)
{
    const Handle file(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_ALWAYS);
    return file.IsOpen() && file.Write(bytes);
}

std::vector<std::string> NamesIn(std::string_view folder)
{
    struct Search
    {
        HANDLE handle;
        ~Search()
        {
            if (handle != INVALID_HANDLE_VALUE)
            {
                FindClose(handle);
            }
        }
    };
    std::vector<std::string> names;
    WIN32_FIND_DATAW found;
    const Search search{FindFirstFileW((NativePath(folder) / L"*").c_str(), &found)};
    for (bool more = search.handle != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search.handle, &found) != FALSE)
    {
        names.push_back(windows::FromWide(found.cFileName));
    }
    std::erase(names, ".");
    std::erase(names, "..");
    return names;
}

std::string MachineName()
{
    std::array<wchar_t, MAX_COMPUTERNAME_LENGTH + 1> name{};
    auto length = static_cast<DWORD>(name.size());
    return GetComputerNameW(name.data(), &length) ? windows::FromWide({name.data(), length}) : std::string();
}

} // namespace vellumo::host
