// A cell of a grid as a scenario writes it: its text and, when they matter, its colours and image behind it in
// brackets: `Assegna esenzione [blue on #FFEFF6]`, `[on #FFFF00]`, `[error]`, `[plain]`. `\n` in the text is a line
// break.
#pragma once

#include "player/screen.h"

#include <optional>
#include <string>

namespace vellumo::player
{

// A text for a message: in quotes, line ends visible, cut when very long.
[[nodiscard]] std::string Quoted(const std::string& text);

// Empty when the cell is as expected; what is not written in brackets may be anything. "*" stands for any text.
[[nodiscard]] std::optional<std::string> CellDiffers(const std::string& expected, const CellSeen& seen);

} // namespace vellumo::player
