// The screen that the library's windows are on, with the operator before it.
#pragma once

#include "simulator/screen/window.h"

#include <filesystem>

namespace vellumo::screen
{

class Screen
{
public:
    virtual ~Screen() = default;

    // The window on top while the library is at work (a wait window during a call, which is not waiting for anybody);
    // null when none of the library's is on screen. Good until the next message is dispatched.
    [[nodiscard]] virtual Window* Topmost() = 0;

    // From now on the system makes no window for a form of the library; boxes go on.
    virtual void RefuseWindows() = 0;

    // Saves a picture of it. False where there is none to take.
    virtual bool TakePicture(const std::filesystem::path& file) = 0;
};

} // namespace vellumo::screen
