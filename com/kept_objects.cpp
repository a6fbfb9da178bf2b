#include "com/kept_objects.h"

#include "com/faults.h"
#include "com/opzioni_ricetta.h"

namespace vellumo::com
{

const IID iidKeptFace{0x0e7a1d53, 0x9c0e, 0x4c0b, {0x8b, 0x51, 0x77, 0x2d, 0x1f, 0x6f, 0x0d, 0x92}};

void* OpaqueObject::Find(REFIID iid) noexcept
{
    if (iid == IID_IUnknown || iid == IID_IDispatch)
    {
        return static_cast<IDispatch*>(this);
    }
    return iid == iidKeptFace ? static_cast<KeptFace*>(this) : nullptr;
}

HRESULT OpaqueObject::GetTypeInfoCount(UINT* count)
{
    return GuardResult(*this, IID_IDispatch, count, [] { return 0U; });
}

HRESULT OpaqueObject::GetTypeInfo(UINT, LCID, ITypeInfo** info)
{
    if (!info)
    {
        return RefusePointer();
    }
    *info = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT OpaqueObject::GetIDsOfNames(REFIID, LPOLESTR*, UINT count, LCID, DISPID* ids)
{
    if (!ids)
    {
        return RefusePointer();
    }
    for (UINT name = 0; name < count; ++name)
    {
        ids[name] = DISPID_UNKNOWN;
    }
    return DISP_E_UNKNOWNNAME;
}

HRESULT OpaqueObject::Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*)
{
    return DISP_E_MEMBERNOTFOUND;
}

windows::ComPtr<IDispatch> ComKeptObjectFaces::Wrap(const std::shared_ptr<host::KeptObject>& object) const
{
    using windows::ComPtr;
    if (!object)
    {
        return {};
    }
    if (auto options = std::dynamic_pointer_cast<host::OpzioniRicetta>(object))
    {
        return ComPtr<IDispatch>::Attach(new OpzioniRicettaObject(std::move(options)));
    }
    return ComPtr<IDispatch>::Attach(new OpaqueObject(object));
}

std::shared_ptr<host::KeptObject> ComKeptObjectFaces::Unwrap(IDispatch* face) const
{
    const auto kept = windows::ComPtr<IDispatch>(face).As<KeptFace>(iidKeptFace);
    return kept ? kept->Kept() : nullptr;
}

} // namespace vellumo::com
