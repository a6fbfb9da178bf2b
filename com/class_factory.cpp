#include "com/class_factory.h"

#include "com/faults.h"

namespace vellumo::com
{

void* ClassFactory::Find(REFIID iid) noexcept
{
    return iid == IID_IUnknown || iid == IID_IClassFactory ? static_cast<IClassFactory*>(this) : nullptr;
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** result)
{
    if (!result)
    {
        return RefusePointer();
    }
    *result = nullptr;
    return outer ? CLASS_E_NOAGGREGATION : m_creator(iid, result);
}

HRESULT ClassFactory::LockServer(BOOL lock)
{
    windows::LockModule(lock != FALSE);
    return S_OK;
}

} // namespace vellumo::com
