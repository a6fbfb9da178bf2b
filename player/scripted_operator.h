// Plays the operator in one call: compares each window that appears with what the scenario expects, and works it step
// by step. What appears and is not expected is a difference, and is got rid of so that the call comes to its end; what
// is expected and does not appear is one when the call is over.
//
// Windows that show how far a job is wait for nobody, so they are not worked but watched: what the scenario says of one
// must have been so at some moment of the call, and its bar must never go back.
#pragma once

#include "player/statement.h"
#include "simulator/screen/window.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace vellumo::player
{

class ScriptedOperator
{
public:
    // `call` and its windows are a line of the scenario and lines below it. `lenient`: something fails in it on
    // purpose, so that it may end before all windows have appeared, and boxes may tell of the failure.
    // `byDefault`: a window that is not expected is none of anybody's business, and its default button is pressed.
    ScriptedOperator(Run& run, const Node& call, bool lenient, bool byDefault = false);

    // A window that waits.
    void Work(screen::Window& window);
    // Any other; it need not have a bar.
    void Watch(screen::Window& window);
    // Tells what was not seen; from then on nothing is expected.
    void End();
    // The way out of a window that does least.
    static void Dismiss(screen::Window& window);

private:
    struct Expected
    {
        const Node* line;
        bool appeared = false;
        std::vector<bool> met; // by the lines below it
    };

    struct Known
    {
        bool isUnexpected = false; // and told to be
        int defaults = 0;          // how often it got its default button
    };
    // As it was last seen.
    struct Bar
    {
        std::uint64_t window = 0;
        int milestones = 0;
        float value = 0;
        std::vector<std::string> stage;
    };

    [[nodiscard]] bool IsWorking(const screen::Window& window) const;
    [[nodiscard]] std::vector<Expected>::iterator NextExpected();
    // Takes the next expected window that fits; false when none does.
    bool Advance(const screen::Window& window);
    void PlayLines(screen::Window& window);
    void LookAtBar(const screen::Window& window);
    void Unexpected(screen::Window& window);
    void TakeDefault(screen::Window& window);
    [[nodiscard]] static bool OnlyTells(const screen::Window& window);

    Run& m_run;
    Place m_call;
    bool m_lenient;
    bool m_byDefault;
    std::vector<Expected> m_expected; // in order
    std::vector<Expected> m_watched;  // may come at any time
    std::size_t m_next = 0;           // where to look for the next one
    Expected* m_current = nullptr;    // being worked, or worked last
    std::uint64_t m_currentId = 0;    // its window
    std::uint64_t m_seenId = 0;       // window last looked at
    std::map<std::uint64_t, Known> m_windows;
    int m_patience = 0;
    Bar m_bar;
    bool m_told = false; // that a bar was not expected, or went back
};

} // namespace vellumo::player
