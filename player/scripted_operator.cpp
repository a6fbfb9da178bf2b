#include "player/scripted_operator.h"

#include "host/fault.h"
#include "player/controls.h"
#include "player/written.h"

#include <algorithm>
#include <exception>

namespace vellumo::player
{
namespace
{

// How often a window may be seen again, with nothing left to do in it, before it counts as still open. Its messages
// have been dispatched each time, so more than a few mean that it does not close.
constexpr int patience = 20;

bool Fits(const Node& expected, const Window& window)
{
    const auto kind = expected.Keyword() == "box"      ? WindowKind::Box
                      : expected.Keyword() == "dialog" ? WindowKind::FileDialog
                                                       : WindowKind::Form;
    return kind == window.Kind() && expected.Text("TITLE") == window.Title();
}

bool IsAction(const Node& line)
{
    return line.group == &actionStatements;
}

} // namespace

void ScriptedOperator::Begin(const Node& call, bool lenient)
{
    m_call = call.place;
    m_windows.clear();
    for (const auto& line : call.below)
    {
        if (line.Keyword() == "box" || line.Keyword() == "window" || line.Keyword() == "dialog")
        {
            m_windows.push_back(&line);
        }
    }
    m_lenient = lenient;
    m_next = 0;
    m_current = nullptr;
    m_currentId = 0;
    m_seenId = 0;
    m_unexpected.clear();
    m_patience = patience;
}

void ScriptedOperator::End()
{
    if (m_current != nullptr && m_line < m_current->below.size() && !m_lenient)
    {
        m_audience.Report(m_current->below[m_line].place,
                          "the window " + Quoted(m_current->Text("TITLE")) + " was gone before this");
    }
    for (; m_next < m_windows.size() && !m_lenient; ++m_next)
    {
        const auto& missing = *m_windows[m_next];
        m_audience.Report(missing.place, std::string(missing.Keyword() == "box" ? "the box " : "the window ") +
                                             Quoted(missing.Text("TITLE")) + " did not appear");
    }
    m_windows.clear();
    m_current = nullptr;
}

void ScriptedOperator::OnScreen(Window& window) noexcept
{
    try
    {
        Play(window);
    }
    catch (const std::exception& fault)
    {
        host::PassOver([&] { m_audience.Report(m_call, std::string("the player failed: ") + fault.what()); });
        host::PassOver([&] { Dismiss(window); });
    }
}

void ScriptedOperator::OnBusy(Window& window) noexcept
{
    host::PassOver([&] { m_audience.OnWork(window); });
}

void ScriptedOperator::Play(Window& window)
{
    if (window.Id() != m_seenId)
    {
        m_seenId = window.Id();
        m_audience.OnWindow(window, m_known.insert(window.Id()).second);
    }
    if (m_current != nullptr && window.Id() == m_currentId && m_line < m_current->below.size())
    {
        Work(window);
        return;
    }
    const bool worked = window.Id() == m_currentId;
    // Any press ends a box, so one that has been worked is on its way out; a form may come back into play.
    if ((!worked || window.Kind() == WindowKind::Form) && Advance(window))
    {
        static_cast<void>(Do(*m_current, window));
        Work(window);
        return;
    }
    if (worked && m_patience-- > 0)
    {
        return;
    }
    Unexpected(window);
}

bool ScriptedOperator::Advance(const Window& window)
{
    const auto fits = [&](const Node* expected) { return Fits(*expected, window); };
    const auto begin = m_windows.begin() + static_cast<std::ptrdiff_t>(m_next);
    const auto found = m_lenient ? std::find_if(begin, m_windows.end(), fits) : begin;
    if (found == m_windows.end() || !fits(*found))
    {
        return false;
    }
    m_current = *found;
    m_next = static_cast<std::size_t>(found - m_windows.begin()) + 1;
    m_line = 0;
    m_currentId = window.Id();
    m_patience = patience;
    return true;
}

bool ScriptedOperator::Do(const Node& line, Window& window)
{
    try
    {
        m_audience.Perform(line, window);
        return true;
    }
    catch (const Differs& difference)
    {
        m_audience.Report(line.place, difference.what());
        return false;
    }
}

// Looks at the window until there is something to do in it; that is done, and takes effect before the next step.
void ScriptedOperator::Work(Window& window)
{
    bool acted = false;
    while (!acted && m_line < m_current->below.size())
    {
        const auto& line = m_current->below[m_line++];
        acted = IsAction(line);
        if (!Do(line, window) && acted)
        {
            // What was to be done cannot be done, and what follows builds on it.
            m_line = m_current->below.size();
            Dismiss(window);
        }
    }
}

// A box that says that something failed, and asks nothing.
bool ScriptedOperator::OnlyTells(const Window& window)
{
    return window.Kind() == WindowKind::Box && window.Icon() != ui::Icon::Information &&
           window.All<ui::Button>().size() == 1;
}

void ScriptedOperator::Unexpected(Window& window)
{
    if (m_lenient && OnlyTells(window))
    {
        Dismiss(window);
        return;
    }
    if (std::find(m_unexpected.begin(), m_unexpected.end(), window.Id()) == m_unexpected.end())
    {
        m_unexpected.push_back(window.Id());
        const bool stillOpen = window.Id() == m_currentId;
        const auto* const next = m_next < m_windows.size() ? m_windows[m_next] : nullptr;
        m_audience.Report(
            next == nullptr ? m_call : next->place,
            Describe(window) + (stillOpen ? " is still open; " : " appeared; ") +
                (next == nullptr ? "no further window is expected" : "expected now: " + Quoted(next->Text("TITLE"))));
    }
    Dismiss(window);
}

// The way out that does least.
void ScriptedOperator::Dismiss(Window& window)
{
    if (window.Kind() != WindowKind::Box)
    {
        window.CloseByFrame();
        return;
    }
    for (const std::string way : {"Cancel", "No", "OK"})
    {
        for (auto* const button : window.All<ui::Button>())
        {
            if (CaptionOf(*button) == way)
            {
                window.Press(*button);
                return;
            }
        }
    }
}

} // namespace vellumo::player
