#include "com/class_factory.h"

namespace vellumo::com
{

HRESULT ClassFactory::QueryInterface(REFIID iid, void** result)
{
    if (!result)
    {
        return E_POINTER;
    }
    *result = nullptr;
    if (iid != IID_IUnknown && iid != IID_IClassFactory)
    {
        return E_NOINTERFACE;
    }
    *result = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
}

ULONG ClassFactory::AddRef()
{
    return ++m_references;
}

ULONG ClassFactory::Release()
{
    const ULONG left = --m_references;
    if (left == 0)
    {
        delete this;
    }
    return left;
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** result)
{
    if (!result)
    {
        return E_POINTER;
    }
    *result = nullptr;
    return outer ? CLASS_E_NOAGGREGATION : m_creator(iid, result);
}

HRESULT ClassFactory::LockServer(BOOL lock)
{
    LockModule(lock != FALSE);
    return S_OK;
}

} // namespace vellumo::com
