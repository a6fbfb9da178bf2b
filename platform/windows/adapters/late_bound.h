// Late-bound calls: an object of the host reached by the names of its members alone.
//
// A `Member` looks its identifier up once and keeps it, so it may be used on objects of one class only; who owns the
// `LateBound` objects of a class owns their members too. Failures are host::Fault with the description and the number
// that the object reported.
#pragma once

#include "platform/windows/adapters/host_name_map.h"
#include "platform/windows/adapters/variant.h"
#include "platform/windows/system/com_ptr.h"

#include <array>
#include <optional>
#include <span>

namespace vellumo::windows
{

class Member
{
public:
    explicit constexpr Member(const names::Name& name) noexcept
        : m_name(name)
    {
    }
    // One that no host calls otherwise.
    explicit constexpr Member(const wchar_t* name) noexcept
        : m_name{L"", name}
    {
    }

    [[nodiscard]] const names::Name& Name() const noexcept { return m_name; }
    [[nodiscard]] DISPID IdOn(IDispatch& object, const wchar_t* objectName,
                              const HostNameMap& hostNames = HostNameMap::Compiled());

private:
    names::Name m_name;
    DISPID m_id = DISPID_UNKNOWN;
};

class LateBound
{
public:
    LateBound() = default;
    // `name` stands in the descriptions of faults; `hostNames` says what the host calls the members. Both must outlive
    // the object.
    LateBound(ComPtr<IDispatch> object, const wchar_t* name, const HostNameMap& hostNames = HostNameMap::Compiled())
        : m_object(std::move(object))
        , m_name(name)
        , m_hostNames(&hostNames)
    {
    }

    // Calls a method or reads a property, with or without arguments; the host may have made it either.
    template <class... Arguments>
    Variant Call(Member& member, const Arguments&... arguments) const
    {
        std::array<VARIANT, sizeof...(Arguments)> plain{arguments.Get()...};
        return Invoke(member, DISPATCH_METHOD | DISPATCH_PROPERTYGET, plain);
    }
    // Writes a property; the last argument is the value, those before it are its indexes.
    template <class... Arguments>
    void Put(Member& member, const Arguments&... arguments) const
    {
        std::array<VARIANT, sizeof...(Arguments)> plain{arguments.Get()...};
        Invoke(member, DISPATCH_PROPERTYPUT, plain);
    }
    // Hands an object over as a property ("Set x.Member = object").
    void PutObject(Member& member, IDispatch* object) const;

    [[nodiscard]] IDispatch* Object() const noexcept { return m_object.Get(); }
    [[nodiscard]] const HostNameMap& HostNames() const noexcept { return *m_hostNames; }

private:
    // The arguments in the order in which they are written; they stay the caller's.
    Variant Invoke(Member& member, WORD flags, std::span<VARIANT> arguments) const;

    ComPtr<IDispatch> m_object;
    const wchar_t* m_name = L"";
    const HostNameMap* m_hostNames = &HostNameMap::Compiled();
};

// A class of the host's by its ProgID, whose identifier is looked up once: a list of patients takes an object for each.
class HostClass
{
public:
    explicit constexpr HostClass(const names::Name& progId) noexcept
        : m_progId(progId)
    {
    }

    // Faults as `CreateByProgId` does.
    [[nodiscard]] LateBound Create(const HostNameMap& hostNames);

private:
    names::Name m_progId;
    std::optional<CLSID> m_id;
};

// Creates an object from its ProgID; faults with the name of the ProgID and the reason.
[[nodiscard]] ComPtr<IDispatch> CreateByProgId(const wchar_t* progId);
// The same, with what the host calls it in the descriptions of faults.
[[nodiscard]] LateBound CreateByProgId(const names::Name& progId, const HostNameMap& hostNames);

} // namespace vellumo::windows
