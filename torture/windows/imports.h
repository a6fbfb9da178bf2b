// What the DLL imports from the system, in this process: each of the functions below is led to one of ours, which
// counts the call, fails when it is due as the function itself would, and passes on otherwise. Nobody else's calls are
// touched, since each module has a table of imports of its own.
#pragma once

#include <windows.h>

namespace vellumo::torture
{

// Once a module is enough; a second time does nothing.
void LeadImports(HMODULE library);

} // namespace vellumo::torture
