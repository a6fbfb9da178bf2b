#include "tests/life/outside.h"

namespace vellumo::life
{
namespace
{

bool IsWordCharacter(char character)
{
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z');
}

// Form 10 is not in "form 101".
bool HasWord(std::string_view line, std::string_view word)
{
    for (std::size_t at = line.find(word); at != std::string_view::npos; at = line.find(word, at + 1))
    {
        const std::size_t end = at + word.size();
        if (end == line.size() || !IsWordCharacter(line[end]))
        {
            return true;
        }
    }
    return false;
}

} // namespace

void Lines::Add(std::string_view line)
{
    constexpr std::string_view full = "(no room for more lines)";
    const std::string_view added = m_size + line.size() + full.size() + 2 > m_text.size() ? full : line;
    if (m_size + added.size() + 1 <= m_text.size())
    {
        std::copy(added.begin(), added.end(), m_text.begin() + static_cast<std::ptrdiff_t>(m_size));
        m_size += added.size();
        m_text.at(m_size++) = '\n';
    }
}

bool Lines::Tell(std::string_view one, std::string_view other) const
{
    const std::string_view all = View();
    for (std::size_t at = all.find(one); at != std::string_view::npos;)
    {
        const std::size_t before = all.rfind('\n', at);
        const std::size_t begin = before == std::string_view::npos ? 0 : before + 1;
        const std::size_t end = all.find('\n', at);
        const auto line = all.substr(begin, end - begin);
        if (HasWord(line, one) && HasWord(line, other))
        {
            return true;
        }
        at = all.find(one, end);
    }
    return false;
}

void Outside::Reset(const Plan& plan)
{
    rows.fill({});
    givenCount = 0;
    issued = 0;
    for (Lines* lines : {&journal, &traces, &openCodes, &violations, &offeredToJournal, &offeredToTraces,
                         &refusedByJournal, &refusedByTraces, &refusedCodes})
    {
        lines->Clear();
    }
    calls = 0;
    callsAt.fill(0);
    failedAt.fill(false);
    faults = 0;
    for (std::size_t i = 0; i < plan.prescriptions.size(); ++i)
    {
        if (plan.prescriptions[i].hasOldCode)
        {
            auto& old = Give(static_cast<int>(i), "0300A3OLD" + std::to_string(i));
            rows.at(i).code = old.code.View();
            old.atRegistration = true;
            old.reached = true;
        }
    }
}

GivenCode& Outside::Give(int prescription, std::string_view code)
{
    GivenCode& entry = given.at(givenCount++);
    entry = {};
    entry.code = code;
    entry.prescription = prescription;
    return entry;
}

bool Outside::IsTold(std::string_view code, int prescription) const
{
    return std::any_of(given.begin(), given.begin() + static_cast<std::ptrdiff_t>(givenCount),
                       [&](const GivenCode& entry)
                       {
                           return entry.atRegistration && entry.reached && entry.code.View() == code &&
                                  (prescription < 0 || entry.prescription == prescription);
                       });
}

bool Outside::IsTold(std::string_view code) const
{
    return IsTold(code, -1);
}

std::string_view WithoutPadding(std::string_view code)
{
    const auto last = code.find_last_not_of(' ');
    return code.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

} // namespace vellumo::life
