#include "player/progress_watch.h"

#include "player/cell.h"

#include <algorithm>
#include <utility>

namespace vellumo::player
{

namespace
{

// What the job is at: all that the window says but the last label, which names the row.
std::vector<std::string> StageOf(const Window& window)
{
    auto labels = window.Labels();
    if (!labels.empty())
    {
        labels.pop_back();
    }
    return labels;
}

} // namespace

void ProgressWatch::Begin(const Place& call, const std::vector<ExpectedWindow>& windows, bool lenient)
{
    m_call = call;
    m_lenient = lenient;
    m_windows.clear();
    m_windowId = 0;
    m_told = false;
    for (const auto& window : windows)
    {
        m_windows.push_back({window, false, std::vector<bool>(window.items.size())});
    }
}

void ProgressWatch::Look(const Window& window)
{
    if (window.ProgressBars().empty())
    {
        return;
    }
    LookAtBar(window);
    const auto found = std::find_if(m_windows.begin(), m_windows.end(),
                                    [&](const Watched& each) { return each.expected.title == window.Title(); });
    if (found == m_windows.end())
    {
        if (!m_told)
        {
            m_report(m_call, "the window " + Quoted(window.Title()) + " appeared, which is not watched");
            m_told = true;
        }
        return;
    }
    found->seen = true;
    for (std::size_t item = 0; item < found->met.size(); ++item)
    {
        // A look does nothing to the window.
        found->met[item] = found->met[item] || !found->expected.items[item].perform(const_cast<Window&>(window));
    }
}

void ProgressWatch::LookAtBar(const Window& window)
{
    const ProgressSeen bar = window.ProgressBars().front();
    if (window.Id() != m_windowId)
    {
        m_windowId = window.Id();
        m_milestones = 0;
        m_last = bar;
    }
    // Each table begins anew; its first row is there a moment before its name.
    auto stage = StageOf(window);
    if (stage == m_stage && bar.value < m_last.value && bar.value > 1 && !m_told)
    {
        m_report(m_call, "the bar of " + Quoted(window.Title()) + " went back");
        m_told = true;
    }
    m_last = bar;
    m_stage = std::move(stage);
    const bool milestone = m_milestones == 0 || (m_milestones == 1 && bar.value >= bar.maximum / 2 && bar.value > 0) ||
                           (m_milestones == 2 && bar.value >= bar.maximum);
    if (milestone)
    {
        ++m_milestones;
        m_onMilestone(window);
    }
}

void ProgressWatch::End()
{
    for (const auto& [expected, seen, met] : m_windows)
    {
        if (!seen && !m_lenient)
        {
            m_report(expected.place, "the window " + Quoted(expected.title) + " did not appear");
        }
        for (std::size_t item = 0; item < met.size(); ++item)
        {
            if (seen && !met[item] && !m_lenient)
            {
                m_report(expected.items[item].place, "this was never to be seen in " + Quoted(expected.title));
            }
        }
    }
    m_windows.clear();
}

} // namespace vellumo::player
