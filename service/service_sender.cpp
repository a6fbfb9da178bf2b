#include "service/service_sender.h"

#include "host/fault.h"

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
    std::shared_ptr<ServiceResponse> response;
    host::PassOver(
        [&]
        {
            ui::FormWait window;
            window.Parameters() = request;
            window.OnActivate = [this](ui::FormWait& sender, const std::any& parameters, std::any& result)
            { OnWaitActivate(sender, parameters, result); };
            // A window that fails when the bridge has answered must not take the answer with it.
            host::PassOver([&] { m_desktop.ShowModal(window); });
            if (const auto* result = std::any_cast<std::shared_ptr<ServiceResponse>>(&window.Result()))
            {
                response = *result;
            }
        });
    m_log.Write(request, response.get());
    return response;
}

void ServiceSender::OnWaitActivate(ui::FormWait& window, const std::any& parameters, std::any& result)
{
    const auto* request = std::any_cast<ServiceRequest>(&parameters);
    if (request == nullptr)
    {
        return;
    }
    window.SetOperazione(request->Name());
    std::string reply;
    host::PassOver([&] { reply = m_bridge.CallSebMethod(request->ToString()); });
    result = m_factory.GetResponse(reply);
}

} // namespace vellumo::service
