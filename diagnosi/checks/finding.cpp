#include "diagnosi/checks/finding.h"

#include <algorithm>

namespace vellumo::diagnosi
{
namespace
{

void AddLine(std::string& lines, const std::string& line)
{
    if (line.empty() || ("\n" + lines + "\n").find("\n" + line + "\n") != std::string::npos)
    {
        return;
    }
    lines += (lines.empty() ? "" : "\n") + line;
}

} // namespace

const char* NameOf(State state) noexcept
{
    switch (state)
    {
    case State::Ok:
        return "ok";
    case State::Attention:
        return "attenzione";
    case State::Error:
        return "errore";
    }
    return "";
}

void Findings::Add(const Finding& finding)
{
    m_sum.state = std::max(m_sum.state, finding.state);
    AddLine(m_sum.found, finding.found);
    AddLine(m_sum.remedy, finding.remedy);
}

Finding Findings::Sum(const std::string& whole) const
{
    return m_sum.found.empty() ? Finding{State::Ok, whole} : m_sum;
}

} // namespace vellumo::diagnosi
