// Where the codes are that SISS gave to a program which ended, once it has been started again.
#pragma once

#include "simulator/norda/snapshot.h"
#include "simulator/siss/network.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vellumo::player
{

// The database before the first call, after all of them, and as the program that ended left it.
struct Snapshots
{
    const norda::Snapshot& before;
    const norda::Snapshot& after;
    norda::Snapshot now;
};

// Whether SISS gave any.
[[nodiscard]] bool GivesCodes(const std::vector<siss::Exchange>& exchanges);

// What is wrong with the first of the codes in the first `replies` replies that is neither in the row where the whole
// scenario leaves it nor in a line of the host's journal; empty when all are.
[[nodiscard]] std::optional<std::string> FindLostCode(const std::vector<siss::Exchange>& exchanges, std::size_t replies,
                                                      const Snapshots& snapshots);

} // namespace vellumo::player
