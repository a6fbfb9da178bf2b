// The system's calls for files, in front of those of the C library: they fail when it is due, as on a folder that this
// user may not enter, a disk that cannot be read, or one that is full.
#include "torture/outside_call.h"

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>

namespace
{

using vellumo::torture::FailsInside;
using vellumo::torture::Kind;

template <class Function>
Function* Next(Function*, const char* name) noexcept
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool Refuses(Kind kind, int error) noexcept
{
    const bool fails = FailsInside(kind);
    errno = fails ? error : errno;
    return fails;
}

} // namespace

extern "C"
{

#define VELLUMO_NEXT(name) static auto* const next = Next(&(name), #name)

    FILE* fopen(const char* path, const char* mode)
    {
        VELLUMO_NEXT(fopen);
        return Refuses(Kind::OpenFile, EACCES) ? nullptr : next(path, mode);
    }
    FILE* fopen64(const char* path, const char* mode)
    {
        VELLUMO_NEXT(fopen64);
        return Refuses(Kind::OpenFile, EACCES) ? nullptr : next(path, mode);
    }
    int open(const char* path, int flags, ...)
    {
        VELLUMO_NEXT(open);
        va_list rest;
        va_start(rest, flags);
        const auto mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
        va_end(rest);
        return Refuses(Kind::OpenFile, EACCES) ? -1 : next(path, flags, mode);
    }
    DIR* opendir(const char* path)
    {
        VELLUMO_NEXT(opendir);
        return Refuses(Kind::OpenFile, EACCES) ? nullptr : next(path);
    }
    ssize_t read(int file, void* bytes, size_t size)
    {
        VELLUMO_NEXT(read);
        return Refuses(Kind::ReadFile, EIO) ? -1 : next(file, bytes, size);
    }
    ssize_t pread(int file, void* bytes, size_t size, off_t position)
    {
        VELLUMO_NEXT(pread);
        return Refuses(Kind::ReadFile, EIO) ? -1 : next(file, bytes, size, position);
    }
    ssize_t write(int file, const void* bytes, size_t size)
    {
        VELLUMO_NEXT(write);
        return Refuses(Kind::WriteFile, ENOSPC) ? -1 : next(file, bytes, size);
    }
    ssize_t writev(int file, const struct iovec* pieces, int count)
    {
        VELLUMO_NEXT(writev);
        return Refuses(Kind::WriteFile, ENOSPC) ? -1 : next(file, pieces, count);
    }
    ssize_t pwrite(int file, const void* bytes, size_t size, off_t position)
    {
        VELLUMO_NEXT(pwrite);
        return Refuses(Kind::WriteFile, ENOSPC) ? -1 : next(file, bytes, size, position);
    }
    int fdatasync(int file)
    {
        VELLUMO_NEXT(fdatasync);
        return Refuses(Kind::WriteFile, EIO) ? -1 : next(file);
    }
    int mkdir(const char* path, mode_t mode) noexcept
    {
        VELLUMO_NEXT(mkdir);
        return Refuses(Kind::MakeFolder, EACCES) ? -1 : next(path, mode);
    }

#undef VELLUMO_NEXT
}
