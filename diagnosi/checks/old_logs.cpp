#include "diagnosi/checks/old_logs.h"

#include "environment/files.h"
#include "environment/siss_date_time.h"
#include "host/path.h"
#include "host/trace_files.h"

#include <algorithm>
#include <filesystem>

namespace vellumo::diagnosi
{
namespace
{

namespace fs = std::filesystem;

// The files first, so that a folder with something else in it keeps only that.
bool RemoveFolder(const std::string& path)
{
    std::error_code error;
    for (const auto& name : host::NamesIn(path))
    {
        const std::string file = environment::JoinPath(path, name);
        if (environment::FileExists(file))
        {
            fs::remove(host::NativePath(file), error);
        }
    }
    return fs::remove(host::NativePath(path), error);
}

} // namespace

std::vector<std::string> OldLogFolders(const Machine& machine, int days)
{
    const std::string log = LogFolder(machine);
    const std::int32_t today = machine.clock.Now().DayNumber();
    std::vector<std::string> old;
    for (auto& name : host::NamesIn(log))
    {
        const auto time = environment::TimeOfStamp(name);
        if (time && today - time->DayNumber() > days && environment::FolderExists(environment::JoinPath(log, name)))
        {
            old.push_back(std::move(name));
        }
    }
    std::ranges::sort(old);
    return old;
}

std::vector<std::string> RemoveLogFolders(const Machine& machine, const std::vector<std::string>& names)
{
    std::vector<std::string> left;
    for (const auto& name : names)
    {
        if (!RemoveFolder(environment::JoinPath(LogFolder(machine), name)))
        {
            left.push_back(name);
        }
    }
    return left;
}

} // namespace vellumo::diagnosi
