// Faults at the border to the host: no exception leaves a COM method; it becomes an HRESULT with error information.
// Every member goes through one of these functions, which first take away the error information of an earlier call:
// a host that asks after a failure must not read about another one.
#pragma once

#include "platform/windows/system/com_ptr.h"

#include <oaidl.h>

#include <string_view>
#include <type_traits>

namespace vellumo::com
{

inline constexpr HRESULT faultOfTheLibrary = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_ITF, 0x0200);

// For the exception being handled, with error information as far as there is memory for it:
//   host::Fault      its description; its number when that is a failure code of COM, else `faultOfTheLibrary`
//   std::bad_alloc   E_OUTOFMEMORY
//   anything else    E_UNEXPECTED
HRESULT FailWithCurrentException(const IID& source) noexcept;

// A missing place for a result: E_POINTER, without error information.
HRESULT RefusePointer() noexcept;

// Runs a body that returns an HRESULT or nothing; nothing is S_OK.
template <class Body>
HRESULT ResultOf(const IID& source, Body&& body) noexcept
{
    SetErrorInfo(0, nullptr);
    try
    {
        if constexpr (std::is_void_v<std::invoke_result_t<Body>>)
        {
            body();
            return S_OK;
        }
        else
        {
            return body();
        }
    }
    catch (...)
    {
        return FailWithCurrentException(source);
    }
}

// Runs the body of a member of `object`. The object stays alive until the member returns, whatever the host releases
// while a window of the library is on screen.
template <class Object, class Body>
HRESULT Guard(Object& object, const IID& source, Body&& body) noexcept
{
    const windows::ComPtr<Object> alive(&object);
    return ResultOf(source, body);
}

// The same for a member that has a result, which the body returns: the place for it must be there, and holds 0, False
// or nothing before any work starts and after a fault.
template <class Object, class Result, class Body>
HRESULT GuardResult(Object& object, const IID& source, Result* result, Body&& body) noexcept
{
    if (!result)
    {
        return RefusePointer();
    }
    *result = Result{};
    return Guard(object, source, [&] { *result = body(); });
}

} // namespace vellumo::com
