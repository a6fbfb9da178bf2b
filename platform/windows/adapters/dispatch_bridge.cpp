#include "platform/windows/adapters/dispatch_bridge.h"

#include "host/fault.h"
#include "platform/windows/system/text.h"

namespace vellumo::windows
{
namespace
{

LateBound CreateBridge()
{
    try
    {
        return {CreateByProgId(names::bridgeProgId), names::bridgeProgId};
    }
    catch (const host::Fault& fault)
    {
        throw host::Fault(
            "Il collegamento al SISS non è disponibile: il componente " + FromWide(names::bridgeProgId) +
                " del client SISS non è installato o non è registrato su questo computer. Installare il "
                "client SISS (o registrarne di nuovo il componente) e riavviare il programma. Dettaglio: " +
                fault.Description(),
            fault.Number());
    }
}

} // namespace

DispatchBridge::DispatchBridge()
    : m_bridge(CreateBridge())
{
}

std::string DispatchBridge::CallSebMethod(const std::string& requestXml)
{
    return m_bridge.Call(m_callSebMethod, Variant::Text(requestXml)).ToText();
}

} // namespace vellumo::windows
