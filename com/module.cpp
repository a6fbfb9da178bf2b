#include "com/module.h"

#include "platform/windows/adapters/host_fault.h"
#include "platform/windows/system/this_module.h"

#include <oleauto.h>

namespace vellumo::com
{

std::wstring ModulePath()
{
    std::wstring path(MAX_PATH, L'\0');
    for (;;)
    {
        const DWORD length = GetModuleFileNameW(windows::ThisModule(), path.data(), static_cast<DWORD>(path.size()));
        if (length == 0)
        {
            windows::ThrowIfFailed(HRESULT_FROM_WIN32(GetLastError()), "GetModuleFileName");
        }
        if (length < path.size())
        {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2); // cut off: a long path
    }
}

windows::ComPtr<ITypeLib> LoadLibraryOf(Library library)
{
    const std::wstring path = ModulePath() + L"\\" + std::to_wstring(static_cast<int>(library));
    windows::ComPtr<ITypeLib> loaded;
    windows::ThrowIfFailed(LoadTypeLibEx(path.c_str(), REGKIND_NONE, loaded.Put()),
                           "Impossibile leggere la libreria dei tipi contenuta in Vellumo.dll");
    return loaded;
}

windows::ComPtr<ITypeInfo> LoadTypeInfo(Library library, const GUID& type)
{
    windows::ComPtr<ITypeInfo> info;
    windows::ThrowIfFailed(LoadLibraryOf(library)->GetTypeInfoOfGuid(type, info.Put()),
                           "Impossibile leggere la libreria dei tipi contenuta in Vellumo.dll");
    return info;
}

} // namespace vellumo::com
