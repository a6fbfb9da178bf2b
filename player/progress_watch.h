// Watches the windows that show how far a job is. They wait for nobody, so the player cannot work them line by line:
// what a scenario says of one must have been so at some moment of the call, and its bar must never go back.
#pragma once

#include "player/expectation.h"
#include "player/screen.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vellumo::player
{

class ProgressWatch
{
public:
    // `report` hears of each difference; `onMilestone` of the first look at a window, the first at its middle and the
    // first at its end.
    using Report = std::function<void(const Place& place, const std::string& what)>;
    using Milestone = std::function<void(const Window& window)>;
    ProgressWatch(Report report, Milestone onMilestone)
        : m_report(std::move(report))
        , m_onMilestone(std::move(onMilestone))
    {
    }

    // `lenient`: something fails in the call on purpose, so that not all of it may come to be.
    void Begin(const Place& call, const std::vector<ExpectedWindow>& windows, bool lenient);
    void Look(const Window& window);
    // Tells what has not been seen.
    void End();

private:
    struct Watched
    {
        ExpectedWindow expected;
        bool seen = false;
        std::vector<bool> met; // by line
    };

    void LookAtBar(const Window& window);

    Report m_report;
    Milestone m_onMilestone;
    Place m_call;
    std::vector<Watched> m_windows;
    bool m_lenient = false;
    std::uint64_t m_windowId = 0; // being watched
    int m_milestones = 0;
    ProgressSeen m_last;
    std::vector<std::string> m_stage; // as the bar was last seen
    bool m_told = false;              // that it was not expected, or went back
};

} // namespace vellumo::player
