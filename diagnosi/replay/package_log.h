// The log of exchanges in a support package, for whoever gets one: a zip file whose folder "Log" is laid out like
// SISS\Log.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace vellumo::diagnosi
{

// That log in a temporary folder, which goes with the object. Faults when the file is no zip or is damaged, when it
// holds more than a package can, and when the folder cannot be written. Names that are none of a log's are passed over,
// so that nothing is written elsewhere.
class PackageLog
{
public:
    explicit PackageLog(std::string_view zip);
    ~PackageLog();
    PackageLog(const PackageLog&) = delete;
    PackageLog& operator=(const PackageLog&) = delete;

    // Windows path text.
    [[nodiscard]] std::string Folder() const;

private:
    std::filesystem::path m_folder;
};

} // namespace vellumo::diagnosi
