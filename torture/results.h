// What came of each failure, in lines. Kept in a file where several processes share the work, since each adds its own,
// and one that goes on where another has ended in the middle knows which failure ended it.
#pragma once

#include "torture/outside_call.h"

#include <array>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

namespace vellumo::torture
{

// Of all calls of a kind each so-manieth fails.
using Sample = std::array<std::size_t, kindCount>;

class Results
{
public:
    // `file`: "" keeps nothing. Faults when a process that wrote there ended, and not in a failure.
    explicit Results(const std::filesystem::path& file);

    [[nodiscard]] bool HasTried(const std::string& failure) const { return m_tried.count(failure) != 0; }
    // What comes now is the doing of this failure.
    void Try(const std::string& failure);
    // It has been played. `came`: the call that was to fail was made.
    void Played(Operation operation, Kind kind, bool came);
    // Tells it, too.
    void Find(const std::string& finding);

    // Adds what others have written.
    void Add(const std::filesystem::path& file);
    // Prints the table, operations by kinds, and what it sums up to. True when nothing was found.
    [[nodiscard]] bool Tell(const Sample& sample) const;

private:
    void Write(const std::string& line);
    void Take(const std::string& line);
    void TellKinds(std::size_t first, std::size_t last, const Sample& sample) const;
    [[nodiscard]] bool HasAny(std::size_t operation) const;

    std::ofstream m_file;
    std::set<std::string> m_tried;
    std::array<Counts, operationCount> m_injected{};
    Counts m_missed{}; // the call did not come
    std::size_t m_findings = 0;
};

} // namespace vellumo::torture
