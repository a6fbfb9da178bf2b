// Whoever plays a scenario, as the operator and the progress watch see it: performs the lines that belong to a window,
// and hears of what happens on the screen.
#pragma once

#include "player/screen.h"
#include "player/statement.h"

#include <string>

namespace vellumo::player
{

class Audience
{
public:
    virtual ~Audience() = default;

    virtual void Report(const Place& place, const std::string& what) = 0;
    // Throws Differs when the window is not as the line says, or what it asks for cannot be done.
    virtual void Perform(const Node& line, Window& window) = 0;
    // Whether the window is as the line says.
    [[nodiscard]] virtual bool IsSo(const Node& look, Window& window) = 0;
    // A window came on top, or came back.
    virtual void OnWindow(const Window& window, bool isNew) = 0;
    // A window that is at work: the first look at it, the first at its middle and the first at its end.
    virtual void OnMilestone(const Window& window) = 0;
    // Each look at a window that is at work.
    virtual void OnWork(Window& window) = 0;
};

} // namespace vellumo::player
