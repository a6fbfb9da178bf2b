// What a screen reader finds in a window: a line each control, row and cell, as it would be read out.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace vellumo::tests
{

// Role, name, value, what it is in, what it does: `button "Conferma" Alt+C [default, focused]: Salva.`. Rows and cells
// are indented below their table. The thread is in an apartment.
[[nodiscard]] std::vector<std::string> AccessibleTree(HWND window);

} // namespace vellumo::tests
