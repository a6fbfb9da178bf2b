#include "ui/pace.h"

namespace vellumo::ui
{
namespace
{

constexpr std::int64_t minute = 60;
constexpr std::int64_t hour = 60 * minute;
// The clock counts whole seconds, so that after fewer of them the pace would be a guess.
constexpr std::int64_t secondsToKnow = 5;
constexpr std::int64_t longestStep = 5 * minute;

std::int64_t Seconds(const host::Date& date)
{
    const auto calendar = date.ToCalendar();
    return date.DayNumber() * 24 * hour + calendar.hour * hour + calendar.minute * minute + calendar.second;
}

std::string TimeLeft(std::int64_t seconds)
{
    if (seconds < minute)
    {
        return "manca meno di un minuto";
    }
    const std::int64_t minutes = (seconds + minute / 2) / minute;
    const std::int64_t hours = minutes / 60;
    const std::int64_t rest = minutes % 60;
    std::string text = minutes == 1 || (hours == 1 && rest == 0) ? "manca circa " : "mancano circa ";
    text += hours == 0 ? "" : hours == 1 ? "1 ora" : std::to_string(hours) + " ore";
    text += hours == 0 || rest == 0 ? "" : " e ";
    return text + (rest == 0 ? "" : rest == 1 ? "1 minuto" : std::to_string(rest) + " minuti");
}

} // namespace

std::string Pace::After(std::int32_t done, std::int32_t all)
{
    const std::int64_t now = Seconds(m_clock.Now());
    if (!m_begun || now < m_lastAt || now - m_lastAt > longestStep)
    {
        m_begun = true;
        m_beganAt = now;
        m_doneBefore = done;
    }
    m_lastAt = now;
    const std::int64_t elapsed = now - m_beganAt;
    const std::int64_t steps = done - m_doneBefore;
    if (elapsed < secondsToKnow || steps <= 0)
    {
        return "";
    }
    const std::int64_t perMinute = steps * minute / elapsed;
    const std::string pace = "; " + m_things + " al minuto: " + (perMinute == 0 ? "meno di 1" : Grouped(perMinute));
    return done < all ? pace + "; " + TimeLeft((all - done) * elapsed / steps) : pace;
}

std::string Grouped(std::int64_t number)
{
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > 3; at -= 3)
    {
        text.insert(at - 3, 1, '.');
    }
    return text;
}

} // namespace vellumo::ui
