// Whose code is running: the module that resources, window classes and file names belong to.
#pragma once

#include <windows.h>

namespace vellumo::windows
{

// The module (DLL or program) that this code is linked into.
[[nodiscard]] HINSTANCE ThisModule() noexcept;

} // namespace vellumo::windows
