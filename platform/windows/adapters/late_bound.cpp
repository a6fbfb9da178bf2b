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

void ThrowIfNotCreated(HRESULT result, const wchar_t* progId)
{
    ThrowIfFailed(result, "Impossibile creare l'oggetto " + FromWide(progId));
}

CLSID IdOf(const wchar_t* progId)
{
    CLSID id{};
    ThrowIfNotCreated(CLSIDFromProgID(progId, &id), progId);
    return id;
}

ComPtr<IDispatch> CreateOf(const CLSID& id, const wchar_t* progId)
{
    ComPtr<IDispatch> object;
    ThrowIfNotCreated(CoCreateInstance(id, nullptr, CLSCTX_SERVER, IID_IDispatch, object.PutVoid()), progId);
    return object;
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
    return CreateOf(IdOf(progId), progId);
}

LateBound HostClass::Create(const HostNameMap& hostNames)
{
    const wchar_t* const name = hostNames.Of(m_progId);
    if (!m_id)
    {
        m_id = IdOf(name);
    }
    return {CreateOf(*m_id, name), name, hostNames};
}

LateBound CreateByProgId(const names::Name& progId, const HostNameMap& hostNames)
{
    return HostClass(progId).Create(hostNames);
}

} // namespace vellumo::windows
