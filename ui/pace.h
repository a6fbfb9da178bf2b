// How fast a long job goes, and how long the rest of it will take. Measured by the host's clock, in whole seconds, over
// all that was done so far. A clock that is set back or jumps ahead, as when the machine slept, begins it anew.
#pragma once

#include "host/clock.h"

#include <cstdint>
#include <string>
#include <utility>

namespace vellumo::ui
{

class Pace
{
public:
    // `things` is what the job does, in the plural. `clock` outlives the pace.
    Pace(const host::Clock& clock, std::string things)
        : m_clock(clock)
        , m_things(std::move(things))
    {
    }

    // To be called at each step, `done` of `all`. "; pazienti al minuto: 480; mancano circa 4 minuti"; "" as long as
    // too little was done to know.
    [[nodiscard]] std::string After(std::int32_t done, std::int32_t all);

private:
    const host::Clock& m_clock;
    std::string m_things;
    bool m_begun = false;
    std::int64_t m_beganAt = 0; // seconds
    std::int64_t m_lastAt = 0;
    std::int32_t m_doneBefore = 0;
};

// With a dot behind each three digits from the right: "12.345".
[[nodiscard]] std::string Grouped(std::int64_t number);

} // namespace vellumo::ui
