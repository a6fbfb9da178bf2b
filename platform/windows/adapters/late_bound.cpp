#include "platform/windows/adapters/late_bound.h"

#include "platform/windows/adapters/host_fault.h"
#include "platform/windows/system/text.h"

#include <algorithm>

namespace vellumo::windows
{
namespace
{

std::string FullName(const wchar_t* object, const wchar_t* member)
{
    return FromWide(object) + "." + FromWide(member);
}

} // namespace

DISPID Member::IdOn(IDispatch& object, const wchar_t* objectName, const HostNameMap& hostNames)
{
    if (m_id == DISPID_UNKNOWN)
    {
        auto* name = const_cast<wchar_t*>(hostNames.Of(m_name)); // the function does not write to it
        const HRESULT result = object.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &m_id);
        if (FAILED(result))
        {
            m_id = DISPID_UNKNOWN;
            throw MakeFault(result, FullName(objectName, name));
        }
    }
    return m_id;
}

Variant LateBound::Invoke(Member& member, WORD flags, std::span<VARIANT> arguments) const
{
    if (!m_object)
    {
        throw host::Fault("L'oggetto " + FromWide(m_name) + " manca: il programma non lo ha fornito.", E_POINTER);
    }
    const DISPID id = member.IdOn(*m_object, m_name, *m_hostNames);
    std::reverse(arguments.begin(), arguments.end());
    DISPID valueName = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    const bool writes = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    if (writes)
    {
        parameters.rgdispidNamedArgs = &valueName;
        parameters.cNamedArgs = 1;
    }
    Variant answer;
    EXCEPINFO exception{};
    const HRESULT result = m_object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                            writes ? nullptr : answer.Put(), &exception, nullptr);
    if (FAILED(result))
    {
        throw MakeFault(result, exception, FullName(m_name, m_hostNames->Of(member.Name())));
    }
    return answer;
}

void LateBound::PutObject(Member& member, IDispatch* object) const
{
    const Variant value(object);
    std::array<VARIANT, 1> arguments{value.Get()};
    Invoke(member, DISPATCH_PROPERTYPUTREF | DISPATCH_PROPERTYPUT, arguments);
}

ComPtr<IDispatch> CreateByProgId(const wchar_t* progId)
{
    CLSID clsid{};
    ComPtr<IDispatch> object;
    HRESULT result = CLSIDFromProgID(progId, &clsid);
    if (SUCCEEDED(result))
    {
        result = CoCreateInstance(clsid, nullptr, CLSCTX_SERVER, IID_IDispatch, object.PutVoid());
    }
    ThrowIfFailed(result, "Impossibile creare l'oggetto " + FromWide(progId));
    return object;
}

LateBound CreateByProgId(const names::Name& progId, const HostNameMap& hostNames)
{
    const wchar_t* const name = hostNames.Of(progId);
    return {CreateByProgId(name), name, hostNames};
}

} // namespace vellumo::windows
