// A zip file in memory, as every system's own tools open it: deflated, names in UTF-8, up to 4 GB.
#pragma once

#include "host/date.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vellumo::diagnosi
{

class ZipArchive
{
public:
    // `name` has "/" between folders. A time before 1980 counts as the beginning of that year. Faults when the archive
    // would become too large.
    void Add(std::string_view name, std::string_view bytes, host::Date time);

    // All of the file. Nothing can be added any more.
    [[nodiscard]] std::string Finish();

private:
    std::string m_files;
    std::string m_directory;
    std::uint16_t m_count = 0;
};

} // namespace vellumo::diagnosi
