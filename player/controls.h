// Finding and naming what a window shows.
#pragma once

#include "player/screen.h"

#include <string>
#include <vector>

namespace vellumo::player
{

// Without the mark before the access key; "&&" is a plain "&".
[[nodiscard]] std::string WithoutAccessKey(const std::string& caption);
// "Yes", "No" …: how scenarios name the answers of a box.
[[nodiscard]] std::string NameOf(ui::Answer answer);
[[nodiscard]] std::string NameOf(ui::Icon icon);
// Buttons of a box go by the answer that they give, all else by its caption.
[[nodiscard]] std::string NameOf(const ControlSeen& control);
[[nodiscard]] std::vector<std::string> NamesOf(const std::vector<ControlSeen>& controls);
// The whole window in one line, for messages.
[[nodiscard]] std::string Describe(const Window& window);

struct Found
{
    std::size_t place = 0; // among those of its kind
    ControlSeen control;
};
// Throws Differs when there is none, and says what there is.
[[nodiscard]] Found Find(const Window& window, ControlKind kind, const std::string& name);
// `number` counts from 1.
[[nodiscard]] Found Find(const Window& window, ControlKind kind, std::int32_t number);

} // namespace vellumo::player
