// The built DLL, loaded from the folder of the test program as COM would load it, without any registration.
#pragma once

#include "platform/windows/system/bstr.h"
#include "platform/windows/system/com_ptr.h"

#include <kelnordaccelib.h>
#include <vellumo.h>

#include <filesystem>
#include <string>

namespace vellumo::tests
{

[[nodiscard]] std::filesystem::path LibraryPath();

class Library
{
public:
    Library();
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    [[nodiscard]] HRESULT GetClassObject(const CLSID& clsid, const IID& iid, void** result) const;
    [[nodiscard]] windows::ComPtr<IClassFactory> ProviderFactory() const;
    // Requires that it works.
    [[nodiscard]] windows::ComPtr<ICCEProvider> CreateProvider() const;
    // True when nothing of the DLL is in use.
    [[nodiscard]] bool CanUnload() const;

private:
    HMODULE m_module;
};

struct ErrorDetails
{
    std::string description;
    std::string source;
    IID interfaceId{};
};

// Takes the thread's error information; empty texts when there is none.
[[nodiscard]] ErrorDetails TakeErrorInfo();

} // namespace vellumo::tests
