// The host's record objects, created by their ProgID and reached late-bound.
#pragma once

#include "host/host_services.h"
#include "host/records.h"
#include "platform/windows/adapters/late_bound.h"

#include <memory>

namespace vellumo::windows
{

// The objects as the host handed them over, for handing on to the host's own objects. Written by the provider's COM
// face, read here.
struct HostHandles
{
    ComPtr<IDispatch> connection;
    ComPtr<IDispatch> lockSrv;
    ComPtr<IDispatch> utils;
    HostNameMap names; // what this host calls its objects and their members; outlives every adapter
};

// A record object that the host made and loaded itself.
[[nodiscard]] std::unique_ptr<host::Record> MakeDispatchRecord(LateBound record);

class DispatchHostObjects final : public host::HostObjects
{
public:
    explicit DispatchHostObjects(std::shared_ptr<const HostHandles> handles)
        : m_handles(std::move(handles))
    {
    }

    [[nodiscard]] std::unique_ptr<host::Record> CreateRecord(host::RecordKind kind,
                                                             const host::HostServices& services) override;
    [[nodiscard]] std::unique_ptr<host::PracticeSettings> CreateSettings(const host::HostServices& services) override;

private:
    [[nodiscard]] HostClass& ClassOf(host::RecordKind kind);
    void HandOver(const LateBound& object) const;

    std::shared_ptr<const HostHandles> m_handles;
    HostClass m_patient{names::patientProgId};
    HostClass m_asl{names::aslProgId};
    HostClass m_specialist{names::specialistProgId};
};

// The record that the host passed as a late-bound object: null for a variant that holds anything but an object that has
// a record's members, and for every by-reference form.
[[nodiscard]] std::unique_ptr<host::Record> RecordIn(const VARIANT& variant,
                                                     const HostNameMap& hostNames = HostNameMap::Compiled());

} // namespace vellumo::windows
