// Plays the operator: compares each window that appears with what the scenario expects, and works it step by step.
// What appears and is not expected is a difference, and is got rid of so that the call comes to its end; what is
// expected and does not appear is one when the call is over.
#pragma once

#include "player/expectation.h"
#include "player/screen.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vellumo::player
{

class Player final : public Operator
{
public:
    // `report` hears of each difference, `onWindow` of each window when it comes on top and whether for the first time,
    // `onAction` of what is done to it, `onBusy` of each look at a window that is at work.
    using Report = std::function<void(const Place& place, const std::string& what)>;
    using WindowSeen = std::function<void(const Window& window, bool isNew)>;
    using ActionSeen = std::function<void(const Window& window, const std::string& told)>;
    using BusySeen = std::function<void(const Window& window)>;
    Player(Report report, WindowSeen onWindow, ActionSeen onAction, BusySeen onBusy)
        : m_report(std::move(report))
        , m_onWindow(std::move(onWindow))
        , m_onAction(std::move(onAction))
        , m_onBusy(std::move(onBusy))
    {
    }

    // `lenient`: the call may end before all windows have appeared, since something fails in it on purpose.
    void Begin(const Place& call, std::vector<ExpectedWindow> windows, bool lenient);
    void End();

    void OnScreen(Window& window) noexcept override;
    void OnBusy(const Window& window) noexcept override;

private:
    void Play(Window& window);
    void Work(Window& window);
    // Takes the next expected window that fits; false when none does.
    bool Advance(const Window& window);
    [[nodiscard]] static bool Fits(const ExpectedWindow& expected, const Window& window);
    void Unexpected(Window& window);
    static void Dismiss(Window& window);

    Report m_report;
    WindowSeen m_onWindow;
    ActionSeen m_onAction;
    BusySeen m_onBusy;
    Place m_call;
    std::vector<ExpectedWindow> m_windows;
    bool m_lenient = false;
    std::size_t m_next = 0;              // window that is expected next
    ExpectedWindow* m_current = nullptr; // the one being worked
    std::size_t m_item = 0;              // its next line
    std::uint64_t m_seenId = 0;          // window last looked at
    std::set<std::uint64_t> m_known;
    std::uint64_t m_currentId = 0;           // window being worked, or worked last
    std::vector<std::uint64_t> m_unexpected; // told already
    int m_patience = 0;
};

} // namespace vellumo::player
