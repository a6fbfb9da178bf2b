// The current local date and time.
#pragma once

#include "host/date.h"

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
};

} // namespace vellumo::host
