// The DLL's four entry points for COM.
#include "com/class_factory.h"
#include "com/faults.h"
#include "com/lack_of_memory.h"
#include "com/provider_face.h"
#include "com/registration.h"
#include "platform/windows/system/module_lock.h"

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** result)
{
    using namespace vellumo;
    if (!result)
    {
        return com::RefusePointer();
    }
    *result = nullptr;
    if (clsid != CLSID_SISSProvider)
    {
        return CLASS_E_CLASSNOTAVAILABLE;
    }
    com::PrepareForLackOfMemory();
    return com::ResultOf(clsid,
                         [&]
                         {
                             const auto factory = windows::ComPtr<com::ClassFactory>::Attach(
                                 new com::ClassFactory(&com::ProviderFace::Create));
                             return factory->QueryInterface(iid, result);
                         });
}

STDAPI DllCanUnloadNow()
{
    return vellumo::windows::IsModuleInUse() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer()
{
    return vellumo::com::Register();
}

STDAPI DllUnregisterServer()
{
    return vellumo::com::Unregister();
}
