// Failures of COM calls as faults of the library. The description is the one that the failing object gave; where it
// gave none, the system's text for the number.
#pragma once

#include "host/fault.h"

#include <oaidl.h>

#include <string>
#include <string_view>

namespace vellumo::windows
{

// `what` names what was attempted, for the case that nobody described the failure: "Utils.ExecuteScalar".
[[nodiscard]] host::Fault MakeFault(HRESULT result, std::string_view what);

// After `IDispatch::Invoke` returned `result`; frees the texts in `exception`.
[[nodiscard]] host::Fault MakeFault(HRESULT result, EXCEPINFO& exception, std::string_view what);

inline void ThrowIfFailed(HRESULT result, std::string_view what)
{
    if (FAILED(result))
    {
        throw MakeFault(result, what);
    }
}

} // namespace vellumo::windows
