// The DLL as a COM module: where it lies, and the type libraries that it carries.
#pragma once

#include "platform/windows/system/com_ptr.h"

#include <oaidl.h>

#include <string>

namespace vellumo::com
{

// The type libraries by their resource number in the DLL.
enum class Library
{
    Vellumo = 1,
    Host = 2 // our statement of the host's interfaces; never registered
};

// Full path of the DLL; faults when the system cannot tell.
[[nodiscard]] std::wstring ModulePath();

// From the DLL itself, registered or not; faults with the system's reason.
[[nodiscard]] windows::ComPtr<ITypeLib> LoadLibraryOf(Library library);
[[nodiscard]] windows::ComPtr<ITypeInfo> LoadTypeInfo(Library library, const GUID& type);

} // namespace vellumo::com
