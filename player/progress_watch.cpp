#include "player/progress_watch.h"

#include "player/controls.h"

#include <algorithm>
#include <utility>

namespace vellumo::player
{
namespace
{

// What the job is at: the heading and what is being done. The labels behind them name the row and count.
std::vector<std::string> StageOf(const Window& window)
{
    auto labels = CaptionsOf(window.All<ui::Label>());
    labels.resize(std::min<std::size_t>(labels.size(), 2));
    return labels;
}

} // namespace

void ProgressWatch::Begin(const Node& call, bool lenient)
{
    m_call = call.place;
    m_lenient = lenient;
    m_windows.clear();
    m_windowId = 0;
    m_told = false;
    for (const auto& line : call.below)
    {
        if (line.Keyword() == "watch")
        {
            m_windows.push_back({&line, false, std::vector<bool>(line.below.size())});
        }
    }
}

void ProgressWatch::Look(Window& window)
{
    if (window.All<ui::ProgressBar>().empty())
    {
        return;
    }
    LookAtBar(window);
    const auto title = window.Title();
    const auto found = std::find_if(m_windows.begin(), m_windows.end(),
                                    [&](const Watched& each) { return each.expected->Text("TITLE") == title; });
    if (found == m_windows.end())
    {
        if (!std::exchange(m_told, true))
        {
            m_audience.Report(m_call, "the window " + Quoted(title) + " appeared, which is not watched");
        }
        return;
    }
    found->seen = true;
    for (std::size_t line = 0; line < found->met.size(); ++line)
    {
        found->met[line] = found->met[line] || m_audience.IsSo(found->expected->below[line], window);
    }
}

void ProgressWatch::LookAtBar(const Window& window)
{
    const auto* const bar = window.All<ui::ProgressBar>().front();
    if (window.Id() != m_windowId)
    {
        m_windowId = window.Id();
        m_milestones = 0;
        m_last = bar->value;
    }
    // Each table begins anew; its first row is there a moment before its name.
    auto stage = StageOf(window);
    if (stage == m_stage && bar->value < m_last && bar->value > 1 && !std::exchange(m_told, true))
    {
        m_audience.Report(m_call, "the bar of " + Quoted(window.Title()) + " went back");
    }
    m_last = bar->value;
    m_stage = std::move(stage);
    if (m_milestones == 0 || (m_milestones == 1 && bar->value >= bar->maximum / 2 && bar->value > 0) ||
        (m_milestones == 2 && bar->value >= bar->maximum))
    {
        ++m_milestones;
        m_audience.OnMilestone(window);
    }
}

void ProgressWatch::End()
{
    for (const auto& [expected, seen, met] : m_windows)
    {
        const auto title = Quoted(expected->Text("TITLE"));
        if (!seen && !m_lenient)
        {
            m_audience.Report(expected->place, "the window " + title + " did not appear");
        }
        for (std::size_t line = 0; line < met.size(); ++line)
        {
            if (seen && !met[line] && !m_lenient)
            {
                m_audience.Report(expected->below[line].place, "this was never to be seen in " + title);
            }
        }
    }
    m_windows.clear();
}

} // namespace vellumo::player
