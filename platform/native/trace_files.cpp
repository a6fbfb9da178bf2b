#include "host/trace_files.h"

#include "host/path.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <utility>

namespace vellumo::host
{
namespace
{

class Descriptor
{
public:
    Descriptor(std::string_view path, int flags)
        : m_file(open(NativePath(path).c_str(), flags | O_CLOEXEC, 0666))
    {
    }
    Descriptor(Descriptor&& other) noexcept
        : m_file(std::exchange(other.m_file, -1))
    {
    }
    Descriptor& operator=(Descriptor&&) = delete;
    ~Descriptor()
    {
        if (m_file >= 0)
        {
            close(m_file);
        }
    }

    [[nodiscard]] bool IsOpen() const noexcept { return m_file >= 0; }
    [[nodiscard]] int Get() const noexcept { return m_file; }

    [[nodiscard]] bool Write(std::string_view bytes) const
    {
        return write(m_file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    }

private:
    int m_file;
};

class LockedFile final : public ExclusiveFile
{
public:
    LockedFile(Descriptor file, std::string_view path)
        : m_file(std::move(file))
        , m_path(NativePath(path))
    {
    }

    std::optional<std::string> Read() override
    {
        std::string bytes;
        std::array<char, 4096> piece;
        for (;;)
        {
            const auto count = pread(m_file.Get(), piece.data(), piece.size(), static_cast<off_t>(bytes.size()));
            if (count <= 0)
            {
                return count == 0 ? std::optional(std::move(bytes)) : std::nullopt;
            }
            bytes.append(piece.data(), static_cast<std::size_t>(count));
        }
    }
    bool Append(std::string_view bytes) override
    {
        return lseek(m_file.Get(), 0, SEEK_END) >= 0 && m_file.Write(bytes) && fdatasync(m_file.Get()) == 0;
    }
    bool Overwrite(std::uint64_t position, char byte) override
    {
        return pwrite(m_file.Get(), &byte, 1, static_cast<off_t>(position)) == 1 && fdatasync(m_file.Get()) == 0;
    }
    void Delete() override { unlink(m_path.c_str()); }

private:
    Descriptor m_file;
    std::filesystem::path m_path;
};

std::unique_ptr<ExclusiveFile> Lock(std::string_view path, int flags)
{
    Descriptor file(path, O_RDWR | flags);
    struct stat found = {};
    // One that its owner deleted between the two steps is no file any more.
    if (!file.IsOpen() || flock(file.Get(), LOCK_EX | LOCK_NB) != 0 || fstat(file.Get(), &found) != 0 ||
        found.st_nlink == 0)
    {
        return nullptr;
    }
    return std::make_unique<LockedFile>(std::move(file), path);
}

} // namespace

std::unique_ptr<ExclusiveFile> ExclusiveFile::Create(std::string_view path)
{
    return Lock(path, O_CREAT | O_EXCL);
}

std::unique_ptr<ExclusiveFile> ExclusiveFile::Take(std::string_view path)
{
    return Lock(path, 0);
}

bool AppendShared(std::string_view path, std::string_view bytes)
{
    const Descriptor file(path, O_WRONLY | O_CREAT | O_APPEND);
    return file.IsOpen() && file.Write(bytes);
}

std::vector<std::string> NamesIn(std::string_view folder)
{
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> list(opendir(NativePath(folder).c_str()), closedir);
    while (const dirent* const entry = list ? readdir(list.get()) : nullptr)
    {
        names.emplace_back(&entry->d_name[0]);
    }
    std::erase(names, ".");
    std::erase(names, "..");
    return names;
}

std::string MachineName()
{
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

} // namespace vellumo::host
