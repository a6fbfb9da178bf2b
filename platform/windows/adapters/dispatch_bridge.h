// The SISS client's bridge object, reached late-bound.
#pragma once

#include "host/bridge.h"
#include "platform/windows/adapters/host_names.h"
#include "platform/windows/adapters/late_bound.h"

namespace vellumo::windows
{

class DispatchBridge final : public host::Bridge
{
public:
    // Creates the bridge; faults when the SISS client is not installed, telling what to do.
    explicit DispatchBridge(const HostNameMap& hostNames);

    [[nodiscard]] std::string CallSebMethod(const std::string& requestXml) override;

private:
    LateBound m_bridge;
    Member m_callSebMethod{names::callSebMethod};
};

} // namespace vellumo::windows
