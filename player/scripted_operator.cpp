#include "player/scripted_operator.h"

#include "player/run.h"
#include "player/written.h"
#include "simulator/screen/controls.h"

#include <algorithm>
#include <utility>

namespace vellumo::player
{
namespace
{

// How often a window may be seen again, with nothing left to do in it, before it counts as still open. Its messages
// have been dispatched each time, so more than a few mean that it does not close.
constexpr int patience = 20;

// A form whose default leads nowhere, such as one that asks for what only a person knows, comes back each time. Each
// exemption that is assigned takes one, too.
constexpr int mostDefaults = 10;

bool Fits(const Node& expected, const screen::Window& window)
{
    const auto kind = expected.Keyword() == "box"      ? screen::WindowKind::Box
                      : expected.Keyword() == "dialog" ? screen::WindowKind::FileDialog
                                                       : screen::WindowKind::Form;
    return kind == window.Kind() && expected.Text("TITLE") == window.Title();
}

// What the job is at: the heading and what is being done. The labels behind them name the row and count.
std::vector<std::string> StageOf(const screen::Window& window)
{
    auto labels = screen::CaptionsOf(window.All<ui::Label>());
    labels.resize(std::min<std::size_t>(labels.size(), 2));
    return labels;
}

} // namespace

ScriptedOperator::ScriptedOperator(Run& run, const Node& call, bool lenient, bool byDefault)
    : m_run(run)
    , m_call(call.place)
    , m_lenient(lenient)
    , m_byDefault(byDefault)
{
    for (const auto& line : call.below)
    {
        if (line.Has("TITLE"))
        {
            auto& expected = line.Keyword() == "watch" ? m_watched : m_expected;
            expected.push_back({&line, false, std::vector<bool>(line.below.size())});
        }
    }
}

void ScriptedOperator::End()
{
    m_current = nullptr;
    m_next = 0;
    auto all = std::exchange(m_expected, {});
    all.insert(all.end(), m_watched.begin(), m_watched.end());
    m_watched.clear();
    if (m_lenient)
    {
        return;
    }
    for (const auto& [expected, appeared, met] : all)
    {
        const auto what = (expected->Keyword() == "box" ? "the box " : "the window ") + Quoted(expected->Text("TITLE"));
        if (!appeared)
        {
            m_run.Report(expected->place, what + " did not appear");
        }
        for (std::size_t line = 0; appeared && line < met.size(); ++line)
        {
            if (!met[line])
            {
                m_run.Report(expected->below[line].place, what + " was gone before this was so");
            }
        }
    }
}

std::vector<ScriptedOperator::Expected>::iterator ScriptedOperator::NextExpected()
{
    return m_expected.begin() + static_cast<std::ptrdiff_t>(m_next);
}

bool ScriptedOperator::IsWorking(const screen::Window& window) const
{
    return m_current != nullptr && window.Id() == m_currentId &&
           std::find(m_current->met.begin(), m_current->met.end(), false) != m_current->met.end();
}

void ScriptedOperator::Work(screen::Window& window)
{
    if (window.Id() != m_seenId)
    {
        m_seenId = window.Id();
        m_run.OnWindow(window, m_windows.try_emplace(window.Id()).second);
    }
    const bool worked = window.Id() == m_currentId;
    if (IsWorking(window))
    {
        PlayLines(window);
    }
    // Any press ends a box, so one that has been worked is on its way out; a form may come back into play.
    else if ((!worked || window.Kind() == screen::WindowKind::Form) && Advance(window))
    {
        static_cast<void>(m_run.PlayIn(window, *m_current->line));
        PlayLines(window);
    }
    else if (!worked || m_patience-- <= 0)
    {
        if (m_byDefault)
        {
            TakeDefault(window);
        }
        else
        {
            Unexpected(window);
        }
    }
}

bool ScriptedOperator::Advance(const screen::Window& window)
{
    const auto fits = [&](const Expected& each) { return Fits(*each.line, window); };
    const auto found = m_lenient ? std::find_if(NextExpected(), m_expected.end(), fits) : NextExpected();
    if (found == m_expected.end() || !fits(*found))
    {
        return false;
    }
    found->appeared = true;
    m_next = static_cast<std::size_t>(found - m_expected.begin()) + 1;
    m_current = &*found;
    m_currentId = window.Id();
    m_patience = patience;
    return true;
}

// Looks at the window until there is something to do in it; that is done, and takes effect before the next step.
void ScriptedOperator::PlayLines(screen::Window& window)
{
    auto& [expected, appeared, met] = *m_current;
    for (auto next = std::find(met.begin(), met.end(), false); next != met.end(); ++next)
    {
        *next = true;
        const auto& line = expected->below[static_cast<std::size_t>(next - met.begin())];
        const bool holds = m_run.PlayIn(window, line);
        if (line.group != &actionStatements)
        {
            continue;
        }
        if (!holds)
        {
            // What was to be done cannot be done, and what follows builds on it.
            std::fill(met.begin(), met.end(), true);
            Dismiss(window);
        }
        return;
    }
}

void ScriptedOperator::Watch(screen::Window& window)
{
    if (window.All<ui::ProgressBar>().empty())
    {
        return;
    }
    LookAtBar(window);
    const auto found = std::ranges::find_if(m_watched, [&](const Expected& each) { return Fits(*each.line, window); });
    if (found == m_watched.end())
    {
        if (!m_byDefault && !std::exchange(m_told, true))
        {
            m_run.Report(m_call, "the window " + Quoted(window.Title()) + " appeared, which is not watched");
        }
        return;
    }
    found->appeared = true;
    for (std::size_t line = 0; line < found->met.size(); ++line)
    {
        found->met[line] = found->met[line] || m_run.IsSo(found->line->below[line], window);
    }
}

void ScriptedOperator::LookAtBar(const screen::Window& window)
{
    const auto* const bar = window.All<ui::ProgressBar>().front();
    if (window.Id() != m_bar.window)
    {
        m_bar = {window.Id(), 0, bar->value, {}};
    }
    // Each table begins anew; its first row is there a moment before its name.
    auto stage = StageOf(window);
    if (stage == m_bar.stage && bar->value < m_bar.value && bar->value > 1 && !std::exchange(m_told, true))
    {
        m_run.Report(m_call, "the bar of " + Quoted(window.Title()) + " went back");
    }
    m_bar.value = bar->value;
    m_bar.stage = std::move(stage);
    constexpr int first = 0;
    constexpr int last = 2;
    const auto& seen = m_bar.milestones;
    if (seen == first ||
        (seen <= last && bar->value > 0 && bar->value >= bar->maximum * static_cast<float>(seen) / last))
    {
        ++m_bar.milestones;
        m_run.OnMilestone(window);
    }
}

// A box that says that something failed, and asks nothing.
bool ScriptedOperator::OnlyTells(const screen::Window& window)
{
    return window.Kind() == screen::WindowKind::Box && window.Icon() != ui::Icon::Information &&
           window.All<ui::Button>().size() == 1;
}

void ScriptedOperator::Unexpected(screen::Window& window)
{
    if (!(m_lenient && OnlyTells(window)) && !std::exchange(m_windows[window.Id()].isUnexpected, true))
    {
        const auto next = NextExpected();
        const bool none = next == m_expected.end();
        m_run.Report(
            none ? m_call : next->line->place,
            screen::Describe(window) + (window.Id() == m_currentId ? " is still open; " : " appeared; ") +
                (none ? "no further window is expected" : "expected now: " + Quoted(next->line->Text("TITLE"))));
    }
    Dismiss(window);
}

void ScriptedOperator::TakeDefault(screen::Window& window)
{
    const auto buttons = window.All<ui::Button>();
    const auto found = std::find_if(buttons.begin(), buttons.end(),
                                    [](const ui::Button* each) { return each->isDefault && each->enabled; });
    if (found == buttons.end() || ++m_windows[window.Id()].defaults > mostDefaults)
    {
        Dismiss(window);
        return;
    }
    window.Press(**found);
}

void ScriptedOperator::Dismiss(screen::Window& window)
{
    if (window.Kind() != screen::WindowKind::Box)
    {
        window.CloseByFrame();
        return;
    }
    for (const std::string way : {"Cancel", "No", "OK"})
    {
        for (auto* const button : window.All<ui::Button>())
        {
            if (screen::CaptionOf(*button) == way)
            {
                window.Press(*button);
                return;
            }
        }
    }
}

} // namespace vellumo::player
