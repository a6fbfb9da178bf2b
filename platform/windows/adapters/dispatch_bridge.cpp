#include "platform/windows/adapters/dispatch_bridge.h"

#include "host/fault.h"
#include "platform/windows/system/text.h"

namespace vellumo::windows
{
namespace
{

LateBound CreateBridge(const HostNameMap& hostNames)
{
    try
    {
        return CreateByProgId(names::bridgeProgId, hostNames);
    }
    catch (const host::Fault& fault)
    {
        // A computer with the client may lack the component all the same: each bitness has its own.
        constexpr const char* bitness = sizeof(void*) == 8 ? "64 bit" : "32 bit";
        throw host::Fault("Il collegamento al SISS non è disponibile: il componente " +
                              FromWide(hostNames.Of(names::bridgeProgId)) +
                              " del client SISS non può essere creato da un programma a " + bitness +
                              ", come questo. Installare o registrare di nuovo il componente del client SISS per i "
                              "programmi a " +
                              bitness + " e riavviare il programma. Dettaglio: " + fault.Description(),
                          fault.Number());
    }
}

} // namespace

DispatchBridge::DispatchBridge(const HostNameMap& hostNames)
    : m_bridge(CreateBridge(hostNames))
{
}

std::string DispatchBridge::CallSebMethod(const std::string& requestXml)
{
    return m_bridge.Call(m_callSebMethod, Variant::Text(requestXml)).ToText();
}

} // namespace vellumo::windows
