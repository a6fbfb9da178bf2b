#include "service/service_sender.h"

#include "host/fault.h"

#include <new>

namespace vellumo::service
{

ServiceSender::ServiceSender(host::Bridge& bridge, const ServiceFactory& factory, ExchangeLog& log,
                             ui::Desktop& desktop)
    : m_bridge(bridge)
    , m_factory(factory)
    , m_log(log)
    , m_desktop(desktop)
{
}

std::shared_ptr<ServiceResponse> ServiceSender::SendServiceRequest(const ServiceRequest& request) noexcept
{
    auto response = host::Trap(std::shared_ptr<ServiceResponse>(), [&] { return SendBehindWindow(request); });
    m_log.Write(request, response.get());
    return response;
}

std::shared_ptr<ServiceResponse> ServiceSender::SendBehindWindow(const ServiceRequest& request)
{
    ui::FormWait window;
    window.Parameters() = request;
    window.OnActivate = [this](ui::FormWait& sender, const std::any& parameters, std::any& result)
    { OnWaitActivate(sender, parameters, result); };
    // A window that fails when the bridge has replied must not take the reply with it.
    host::PassOver([&] { m_desktop.ShowModal(window); });
    const auto* result = std::any_cast<std::shared_ptr<ServiceResponse>>(&window.Result());
    return result != nullptr ? *result : nullptr;
}

void ServiceSender::OnWaitActivate(ui::FormWait& window, const std::any& parameters, std::any& result)
{
    const auto* request = std::any_cast<ServiceRequest>(&parameters);
    if (request == nullptr)
    {
        return;
    }
    window.SetOperazione(request->Name());
    result = m_factory.GetResponse(CallBridge(request->ToString()));
}

std::string ServiceSender::CallBridge(const std::string& requestXml)
{
    try
    {
        return m_bridge.CallSebMethod(requestXml);
    }
    catch (const std::bad_alloc&)
    {
        throw; // what came back is not known; as an empty reply it would say that the session is not active
    }
    catch (...)
    {
        return {};
    }
}

} // namespace vellumo::service
