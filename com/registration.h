// The registry entries by which a host finds the library: for all users of the machine, so writing them needs an
// administrator. Both functions return S_OK or the system's reason.
#pragma once

#include <windows.h>

namespace vellumo::com
{

// Leaves nothing behind when it fails, except where an earlier registration cannot be taken away either.
[[nodiscard]] HRESULT Register() noexcept;

// Removes what `Register` wrote. The entries that the 32-bit and the 64-bit library share stay while the other one is
// registered. Succeeds when there is nothing to remove.
[[nodiscard]] HRESULT Unregister() noexcept;

} // namespace vellumo::com
