#include "tests/com/library.h"

#include <doctest.h>

#include <array>
#include <bit>

namespace vellumo::tests
{

using windows::ComPtr;

std::filesystem::path LibraryPath()
{
    std::array<wchar_t, 32768> program{};
    GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    return std::filesystem::path(program.data()).parent_path() / "Vellumo.dll";
}

Library::Library()
    : m_module(LoadLibraryW(LibraryPath().c_str()))
{
    REQUIRE(m_module);
}

Library::~Library()
{
    FreeLibrary(m_module);
}

HRESULT Library::GetClassObject(const CLSID& clsid, const IID& iid, void** result) const
{
    using Function = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    return std::bit_cast<Function>(GetProcAddress(m_module, "DllGetClassObject"))(clsid, iid, result);
}

ComPtr<IClassFactory> Library::ProviderFactory() const
{
    ComPtr<IClassFactory> factory;
    REQUIRE(GetClassObject(CLSID_SISSProvider, IID_IClassFactory, factory.PutVoid()) == S_OK);
    return factory;
}

ComPtr<ICCEProvider> Library::CreateProvider() const
{
    ComPtr<ICCEProvider> provider;
    REQUIRE(ProviderFactory()->CreateInstance(nullptr, IID_ICCEProvider, provider.PutVoid()) == S_OK);
    return provider;
}

bool Library::CanUnload() const
{
    using Function = HRESULT(STDAPICALLTYPE*)();
    return std::bit_cast<Function>(GetProcAddress(m_module, "DllCanUnloadNow"))() == S_OK;
}

ErrorDetails TakeErrorInfo()
{
    ErrorDetails details;
    ComPtr<IErrorInfo> information;
    if (GetErrorInfo(0, information.Put()) == S_OK && information)
    {
        windows::Bstr text;
        information->GetDescription(text.Put());
        details.description = text.Text();
        information->GetSource(text.Put());
        details.source = text.Text();
        information->GetGUID(&details.interfaceId);
    }
    return details;
}

} // namespace vellumo::tests
