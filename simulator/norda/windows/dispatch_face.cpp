#include "simulator/norda/windows/dispatch_face.h"

#include "host/fault.h"
#include "platform/windows/system/bstr.h"
#include "platform/windows/system/text.h"

#include <algorithm>

namespace vellumo::norda
{
namespace
{

using windows::Bstr;
using windows::ComPtr;
using windows::Variant;

// Only this process's own faces know it.
constexpr IID iidFace{0x57a3fe11, 0x3a13, 0x43dc, {0x97, 0xad, 0x70, 0x6b, 0x65, 0xbd, 0x9e, 0x7d}};

long living = 0;
std::wstring_view behindNames; // what stands behind each member's name
DispatchFace::Observer observer;

HRESULT Raise(const std::string& source, const std::string& description, HRESULT number, EXCEPINFO* exception)
{
    if (exception)
    {
        *exception = {};
        exception->bstrSource = Bstr(source).Detach();
        exception->bstrDescription = description.empty() ? nullptr : Bstr(description).Detach();
        exception->scode = FAILED(number) ? number : E_FAIL;
    }
    return DISP_E_EXCEPTION;
}

} // namespace

const VARIANT& Arguments::At(std::size_t index) const
{
    if (index >= m_reversed.size())
    {
        throw host::Fault("Manca un argomento.", DISP_E_BADPARAMCOUNT);
    }
    return m_reversed[m_reversed.size() - 1 - index];
}

std::vector<host::Value> Arguments::Values(std::size_t index) const
{
    Variant plain;
    if (FAILED(VariantCopyInd(plain.Put(), const_cast<VARIANT*>(&At(index)))) ||
        V_VT(&plain.Get()) != (VT_ARRAY | VT_VARIANT) || SafeArrayGetDim(V_ARRAY(&plain.Get())) != 1)
    {
        throw host::Fault("Un argomento non è una matrice di valori.", DISP_E_TYPEMISMATCH);
    }
    const SAFEARRAY& array = *V_ARRAY(&plain.Get());
    const std::span<const VARIANT> elements(static_cast<const VARIANT*>(array.pvData), array.rgsabound[0].cElements);
    std::vector<host::Value> values;
    for (const VARIANT& element : elements)
    {
        values.push_back(windows::ToValue(element));
    }
    return values;
}

DispatchFace::DispatchFace(const wchar_t* name) noexcept
    : m_name(name)
{
    ++living;
}

DispatchFace::~DispatchFace()
{
    --living;
}

void DispatchFace::Observe(Observer heard)
{
    observer = std::move(heard);
}

long DispatchFace::Living() noexcept
{
    return living;
}

DispatchFace* DispatchFace::From(IDispatch* object) noexcept
{
    return ComPtr<IDispatch>(object).As<DispatchFace>(iidFace).Get(); // which the caller holds anyway
}

void DispatchFace::AddMember(const wchar_t* name, Body call, Body write)
{
    m_members.push_back({name, std::move(call), std::move(write)});
}

void DispatchFace::SetDefault(const wchar_t* name)
{
    m_default = IdOf(name);
}

void* DispatchFace::Find(REFIID iid) noexcept
{
    if (iid == iidFace)
    {
        return this;
    }
    return iid == IID_IUnknown || iid == IID_IDispatch ? static_cast<IDispatch*>(this) : nullptr;
}

HRESULT DispatchFace::GetTypeInfoCount(UINT* count)
{
    if (!count)
    {
        return E_POINTER;
    }
    *count = 0;
    return S_OK;
}

HRESULT DispatchFace::GetTypeInfo(UINT, LCID, ITypeInfo** info)
{
    if (info)
    {
        *info = nullptr;
    }
    return E_NOTIMPL;
}

DISPID DispatchFace::IdOf(const wchar_t* name) const
{
    for (std::size_t index = 0; index < m_members.size(); ++index)
    {
        if (windows::EqualsIgnoringCase(m_members[index].name, name))
        {
            return static_cast<DISPID>(index + 1);
        }
    }
    return DISPID_UNKNOWN;
}

void DispatchFace::Rename(const wchar_t* behind) noexcept
{
    behindNames = behind;
}

HRESULT DispatchFace::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids)
{
    if (!names || !ids || count == 0)
    {
        return E_INVALIDARG;
    }
    std::fill(ids, ids + count, DISPID_UNKNOWN);
    std::wstring name = names[0];
    if (name.ends_with(behindNames))
    {
        name.erase(name.size() - behindNames.size());
        ids[0] = IdOf(name.c_str());
    }
    return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
}

HRESULT DispatchFace::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* answer,
                             EXCEPINFO* exception, UINT*)
{
    const DISPID id = member == DISPID_VALUE ? m_default : member;
    if (id < 1 || static_cast<std::size_t>(id) > m_members.size() || !parameters)
    {
        return DISP_E_MEMBERNOTFOUND;
    }
    const Member& chosen = m_members[static_cast<std::size_t>(id - 1)];
    const bool writes = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    const Body& body = writes ? chosen.write : chosen.call;
    if (!body)
    {
        return DISP_E_MEMBERNOTFOUND;
    }
    const ComPtr<DispatchFace> alive(this);
    try
    {
        Variant result = Shown(body(Arguments(*parameters)));
        if (observer)
        {
            observer({*this, id, flags, *parameters, result.Get()});
        }
        if (answer)
        {
            *answer = result.Detach();
        }
        return S_OK;
    }
    catch (const host::Fault& fault)
    {
        return Raise(fault.Source().empty() ? windows::FromWide(m_name) : fault.Source(), fault.Description(),
                     fault.Number(), exception);
    }
    catch (const std::exception& failure)
    {
        return Raise(windows::FromWide(m_name), failure.what(), E_UNEXPECTED, exception);
    }
}

} // namespace vellumo::norda
