// The class of the bare COM server that the library's is compared with.
#pragma once

#include <windows.h>
// After windows.h.
#include <objbase.h>

namespace vellumo::bench
{

constexpr CLSID bareClass{0x5d1ce7a3, 0x66b0, 0x4d0b, {0x8a, 0x0d, 0x2f, 0x0e, 0x7a, 0x9c, 0x31, 0xe4}};

} // namespace vellumo::bench
