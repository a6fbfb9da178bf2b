#include "host/clock.h"

namespace vellumo::host
{

Date SystemClock::Now() const
{
    if (const std::time_t now = std::time(nullptr); now != m_asked)
    {
        m_known = LocalTime(now);
        m_asked = now;
    }
    return m_known;
}

Date LocalTime(std::time_t time)
{
    // The library runs on the host's one thread, so the shared result of localtime is safe.
    const std::tm* known = std::localtime(&time);
    const std::tm local = known != nullptr ? *known : std::tm();
    const int second = local.tm_sec < 60 ? local.tm_sec : 59; // a leap second counts as the one before it
    return Date::FromCalendar(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                              second)
        .value_or(Date());
}

} // namespace vellumo::host
