// The DLL's four entry points for COM.
#include "com/class_factory.h"
#include "com/module.h"
#include "com/provider_face.h"
#include "com/registration.h"

#include <new>

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** result)
{
    using namespace vellumo;
    if (!result)
    {
        return E_POINTER;
    }
    *result = nullptr;
    if (clsid != CLSID_SISSProvider)
    {
        return CLASS_E_CLASSNOTAVAILABLE;
    }
    const auto factory =
        windows::ComPtr<com::ClassFactory>::Attach(new (std::nothrow) com::ClassFactory(&com::ProviderFace::Create));
    return factory ? factory->QueryInterface(iid, result) : E_OUTOFMEMORY;
}

STDAPI DllCanUnloadNow()
{
    return vellumo::com::IsModuleInUse() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer()
{
    return vellumo::com::Register();
}

STDAPI DllUnregisterServer()
{
    return vellumo::com::Unregister();
}
