// Presses keys as a hand does: through the system's own input, to whatever has the keyboard.
#pragma once

#include <string>

namespace vellumo::screen
{

// Keys are named as in Window::Key. False for a name that stands for no key.
[[nodiscard]] bool PressKey(const std::string& key);

} // namespace vellumo::screen
