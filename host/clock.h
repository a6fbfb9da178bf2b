// The current local date and time.
#pragma once

#include "host/date.h"

#include <ctime>

namespace vellumo::host
{

class Clock
{
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual Date Now() const = 0;
};

class SystemClock final : public Clock
{
public:
    [[nodiscard]] Date Now() const override;

private:
    // A long import asks many times a second, and the system looks up the time zone each time.
    mutable std::time_t m_asked = -1;
    mutable Date m_known;
};

// What a clock on the wall here shows at that time.
[[nodiscard]] Date LocalTime(std::time_t time);

} // namespace vellumo::host
