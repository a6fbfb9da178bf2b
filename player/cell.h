// A cell of a grid as a scenario writes it: its text and, when they matter, its colours and image behind it in
// brackets: `Assegna esenzione [blue on #FFEFF6]`, `[on #FFFF00]`, `[error]`, `[plain]`. `\n` in the text is a line
// break.
#pragma once

#include "simulator/screen/window.h"

namespace vellumo::player
{

// Throws Differs, with `where` before what differs. What is not written in brackets may be anything, and "*" stands for
// any text.
void ExpectCell(const std::string& where, const std::string& expected, const ui::Cell& seen);

} // namespace vellumo::player
