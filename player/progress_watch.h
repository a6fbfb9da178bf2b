// Watches the windows that show how far a job is. They wait for nobody, so the player cannot work them line by line:
// what a scenario says of one must have been so at some moment of the call, and its bar must never go back.
#pragma once

#include "player/audience.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vellumo::player
{

class ProgressWatch
{
public:
    explicit ProgressWatch(Audience& audience)
        : m_audience(audience)
    {
    }

    // `lenient`: something fails in the call on purpose, so that not all of it may come to be.
    void Begin(const Node& call, bool lenient);
    void Look(Window& window);
    // Tells what has not been seen.
    void End();

private:
    struct Watched
    {
        const Node* expected = nullptr;
        bool seen = false;
        std::vector<bool> met; // by line
    };

    void LookAtBar(const Window& window);

    Audience& m_audience;
    Place m_call;
    std::vector<Watched> m_windows;
    bool m_lenient = false;
    std::uint64_t m_windowId = 0; // being watched
    int m_milestones = 0;
    double m_last = 0;
    std::vector<std::string> m_stage; // as the bar was last seen
    bool m_told = false;              // that it was not expected, or went back
};

} // namespace vellumo::player
