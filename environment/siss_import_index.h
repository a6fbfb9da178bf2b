// The master index of the regional tables: which there are, in which file, and when each was last updated.
#pragma once

#include "host/date.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vellumo::environment
{

struct SISSImportIndex
{
    std::string Name;     // such as "ESENZIONI"
    std::string Filename; // without ".txt"
    host::Date UpdateDateTime;
};

// In the order in which entries were added; names compare without regard to case.
class SISSImportIndexs
{
public:
    // Faults when an entry of that name is there already.
    void AddObject(SISSImportIndex index);

    [[nodiscard]] std::size_t Count() const noexcept { return m_entries.size(); }
    // By name, or by position from 1. Faults when there is no such entry.
    [[nodiscard]] const SISSImportIndex& Item(std::string_view name) const;
    [[nodiscard]] const SISSImportIndex& Item(std::size_t position) const;

    [[nodiscard]] auto begin() const noexcept { return m_entries.begin(); }
    [[nodiscard]] auto end() const noexcept { return m_entries.end(); }

private:
    [[nodiscard]] const SISSImportIndex* Find(std::string_view name) const;

    std::vector<SISSImportIndex> m_entries;
    std::unordered_map<std::string, std::size_t> m_places; // in `m_entries`, by the name without case
};

} // namespace vellumo::environment
