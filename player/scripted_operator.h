// Plays the operator: compares each window that appears with what the scenario expects, and works it step by step.
// What appears and is not expected is a difference, and is got rid of so that the call comes to its end; what is
// expected and does not appear is one when the call is over.
#pragma once

#include "player/audience.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace vellumo::player
{

class ScriptedOperator final : public Operator
{
public:
    explicit ScriptedOperator(Audience& audience)
        : m_audience(audience)
    {
    }

    // `call` and its windows are a line of the scenario and lines below it. `lenient`: something fails in it on
    // purpose, so that it may end before all windows have appeared, and boxes may tell of the failure.
    void Begin(const Node& call, bool lenient);
    void End();

    void OnScreen(Window& window) noexcept override;
    void OnBusy(Window& window) noexcept override;

private:
    void Play(Window& window);
    void Work(Window& window);
    // Takes the next expected window that fits; false when none does.
    bool Advance(const Window& window);
    // False when something differed, which has been reported.
    bool Do(const Node& line, Window& window);
    void Unexpected(Window& window);
    [[nodiscard]] static bool OnlyTells(const Window& window);
    static void Dismiss(Window& window);

    Audience& m_audience;
    Place m_call;
    std::vector<const Node*> m_windows; // that are expected
    bool m_lenient = false;
    std::size_t m_next = 0;          // window that is expected next
    const Node* m_current = nullptr; // the one being worked
    std::size_t m_line = 0;          // its next line
    std::uint64_t m_seenId = 0;      // window last looked at
    std::set<std::uint64_t> m_known;
    std::uint64_t m_currentId = 0;           // window being worked, or worked last
    std::vector<std::uint64_t> m_unexpected; // told already
    int m_patience = 0;
};

} // namespace vellumo::player
