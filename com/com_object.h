// The base of the library's COM objects: reference count, QueryInterface and the IDispatch side of their interfaces.
//
//   class Thing final : public ComObject<CLSID_Thing, Dual<IFirst, IID_IFirst, Library::Vellumo>, Dual<…>>
//
// The first interface is the default one: it is what QueryInterface answers for IDispatch, and so what a script sees.
// An object is born with one reference, which belongs to whoever created it, and keeps the DLL loaded.
#pragma once

#include "com/faults.h"
#include "com/module.h"

#include <ocidl.h>
#include <oleauto.h>

#include <atomic>
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
        if (!count)
        {
            return E_POINTER;
        }
        *count = 1;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override
    {
        if (!info)
        {
            return E_POINTER;
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
        HRESULT result = S_OK;
        const HRESULT guarded = Guard(*this, iid, [&] { result = TypeInfo()->GetIDsOfNames(names, count, ids); });
        return FAILED(guarded) ? guarded : result;
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* answer, EXCEPINFO* exception, UINT* badArgument) override
    {
        if (reserved != IID_NULL)
        {
            return DISP_E_UNKNOWNINTERFACE;
        }
        HRESULT result = S_OK;
        const HRESULT guarded = Guard(*this, iid,
                                      [&]
                                      {
                                          result = TypeInfo()->Invoke(static_cast<InterfaceType*>(this), member, flags,
                                                                      parameters, answer, exception, badArgument);
                                      });
        return FAILED(guarded) ? guarded : result;
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
class ComObject : public Duals..., public ISupportErrorInfo, public IProvideClassInfo
{
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override
    {
        if (!result)
        {
            return E_POINTER;
        }
        *result = Find(iid);
        if (!*result)
        {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }

    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --m_references;
        if (left == 0)
        {
            // Letting go of the host's objects may lead back here; a reference taken and dropped then must not
            // destroy a second time.
            m_references = 1;
            delete this;
        }
        return left;
    }

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override
    {
        return ((iid == Duals::Id()) || ...) ? S_OK : S_FALSE;
    }

    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override
    {
        if (!info)
        {
            return E_POINTER;
        }
        *info = nullptr;
        return Guard(*this, clsid, [&] { LoadTypeInfo(Library::Vellumo, clsid).CopyTo(info); });
    }

protected:
    ComObject() = default;
    virtual ~ComObject() = default;

private:
    using Default = std::tuple_element_t<0, std::tuple<Duals...>>;

    [[nodiscard]] IUnknown* Identity() noexcept { return static_cast<typename Default::Interface*>(this); }

    void* Find(REFIID iid) noexcept
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

    ModuleLock m_moduleLock;
    std::atomic<ULONG> m_references = 1;
};

} // namespace vellumo::com
