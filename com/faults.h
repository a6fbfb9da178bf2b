// Faults at the border to the host: no exception leaves a COM method; it becomes an HRESULT with error information.
#pragma once

#include "platform/windows/adapters/com_ptr.h"

#include <oaidl.h>

#include <string_view>

namespace vellumo::com
{

// Sets the thread's error information, as far as there is memory for it, and answers `result`.
HRESULT Fail(HRESULT result, const IID& source, std::string_view description) noexcept;

// For the exception being handled:
//   host::Fault      its description; its number when that is a failure code of COM, else `faultOfTheLibrary`
//   std::bad_alloc   E_OUTOFMEMORY
//   anything else    E_UNEXPECTED
HRESULT FailWithCurrentException(const IID& source) noexcept;

inline constexpr HRESULT faultOfTheLibrary = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_ITF, 0x0200);

// Runs the body of a member of `object`. The object stays alive until the member returns, whatever the host releases
// while a window of the library is on screen.
template <class Object, class Body>
HRESULT Guard(Object& object, const IID& source, Body&& body) noexcept
{
    const windows::ComPtr<Object> alive(&object);
    SetErrorInfo(0, nullptr);
    try
    {
        body();
        return S_OK;
    }
    catch (...)
    {
        return FailWithCurrentException(source);
    }
}

} // namespace vellumo::com
