#include "platform/windows/forms/oleacc_library.h"

namespace vellumo::windows
{
namespace
{

// Null where the system does not have it. The library stays loaded.
template <class Function>
Function LookUp(const char* name) noexcept
{
    const HMODULE library = LoadLibraryW(L"oleacc.dll");
    const FARPROC found = library != nullptr ? GetProcAddress(library, name) : nullptr;
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(found));
}

} // namespace

LRESULT AnswerWith(IAccessible& object, WPARAM wParam) noexcept
{
    static const auto toResult = LookUp<LRESULT(WINAPI*)(REFIID, WPARAM, IUnknown*)>("LresultFromObject");
    return toResult != nullptr ? toResult(IID_IAccessible, wParam, &object) : 0;
}

ComPtr<IAccessible> StandardAccessible(HWND window, LONG objectId) noexcept
{
    static const auto make = LookUp<HRESULT(WINAPI*)(HWND, LONG, REFIID, void**)>("CreateStdAccessibleObject");
    ComPtr<IAccessible> object;
    return make != nullptr && SUCCEEDED(make(window, objectId, IID_IAccessible, object.PutVoid()))
               ? object
               : ComPtr<IAccessible>();
}

} // namespace vellumo::windows
