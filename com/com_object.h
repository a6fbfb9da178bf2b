// The base of the library's COM objects: the IDispatch side of their interfaces, and what a host may ask about them.
//
//   class Thing final : public ComObject<CLSID_Thing, Dual<IFirst, IID_IFirst, Library::Vellumo>, Dual<…>>
//
// The first interface is the default one: it is what QueryInterface returns for IDispatch, and so what a script sees.
// An object keeps the DLL loaded.
#pragma once

#include "com/faults.h"
#include "com/module.h"
#include "platform/windows/system/counted.h"
#include "platform/windows/system/module_lock.h"

#include <ocidl.h>
#include <oleauto.h>

#include <tuple>

namespace vellumo::com
{

// One dual interface, whose IDispatch members work through the type information in the DLL.
template <class InterfaceType, const IID& iid, Library library>
class Dual : public InterfaceType
{
public:
    using Interface = InterfaceType;
    static const IID& Id() noexcept { return iid; }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override
    {
        return GuardResult(*this, iid, count, [] { return 1U; });
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override
    {
        if (!info)
        {
            return RefusePointer();
        }
        *info = nullptr;
        return index != 0 ? DISP_E_BADINDEX : Guard(*this, iid, [&] { TypeInfo().CopyTo(info); });
    }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids) override
    {
        if (reserved != IID_NULL)
        {
            return DISP_E_UNKNOWNINTERFACE;
        }
        return Guard(*this, iid, [&] { return TypeInfo()->GetIDsOfNames(names, count, ids); });
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* answer, EXCEPINFO* exception, UINT* badArgument) override
    {
        if (reserved != IID_NULL)
        {
            return DISP_E_UNKNOWNINTERFACE;
        }
        return Guard(*this, iid,
                     [&]
                     {
                         return TypeInfo()->Invoke(static_cast<InterfaceType*>(this), member, flags, parameters, answer,
                                                   exception, badArgument);
                     });
    }

protected:
    Dual() = default;
    ~Dual() = default;

private:
    const windows::ComPtr<ITypeInfo>& TypeInfo()
    {
        if (!m_typeInfo)
        {
            m_typeInfo = LoadTypeInfo(library, iid);
        }
        return m_typeInfo;
    }

    windows::ComPtr<ITypeInfo> m_typeInfo; // fetched when first asked for: early-bound hosts never do
};

template <const CLSID& clsid, class... Duals>
class ComObject : public windows::Counted<Duals..., ISupportErrorInfo, IProvideClassInfo>
{
public:
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override
    {
        return ((iid == Duals::Id()) || ...) ? S_OK : S_FALSE;
    }

    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override
    {
        return GuardResult(*this, clsid, info, [] { return LoadTypeInfo(Library::Vellumo, clsid).Detach(); });
    }

protected:
    ComObject() = default;
    ~ComObject() override = default;

    [[nodiscard]] void* Find(REFIID iid) noexcept override
    {
        if (iid == IID_IUnknown || iid == IID_IDispatch)
        {
            return Identity();
        }
        if (iid == IID_ISupportErrorInfo)
        {
            return static_cast<ISupportErrorInfo*>(this);
        }
        if (iid == IID_IProvideClassInfo)
        {
            return static_cast<IProvideClassInfo*>(this);
        }
        void* found = nullptr;
        static_cast<void>(
            ((iid == Duals::Id() && (found = static_cast<typename Duals::Interface*>(this)) != nullptr) || ...));
        return found;
    }

private:
    using Default = std::tuple_element_t<0, std::tuple<Duals...>>;

    [[nodiscard]] IUnknown* Identity() noexcept { return static_cast<typename Default::Interface*>(this); }

    windows::ModuleLock m_moduleLock;
};

} // namespace vellumo::com
