// The one way to SISS: shows the wait window, hands the request's text to the bridge while it is on screen, has the
// reply taken apart, and writes both to the exchange log. Owned by the provider.
#pragma once

#include "host/bridge.h"
#include "service/exchange_log.h"
#include "service/service_factory.h"
#include "service/service_request.h"
#include "service/service_response.h"
#include "ui/desktop.h"
#include "ui/form_wait.h"

#include <any>
#include <memory>
#include <string>

namespace vellumo::service
{

class ServiceSender
{
public:
    ServiceSender(host::Bridge& bridge, const ServiceFactory& factory, ExchangeLog& log, ui::Desktop& desktop);

    // Null when the reply does not say how the call ended, when no window could be shown, and when memory ran out on
    // the way. A bridge that faults counts as an empty reply, so its response has failed with code "SEBCONT0001". Never
    // faults.
    [[nodiscard]] std::shared_ptr<ServiceResponse> SendServiceRequest(const ServiceRequest& request) noexcept;

private:
    // Null when the wait window could not be shown, or nothing came of it.
    [[nodiscard]] std::shared_ptr<ServiceResponse> SendBehindWindow(const ServiceRequest& request);
    // Runs while the window is on screen; the only place that calls the bridge.
    void OnWaitActivate(ui::FormWait& window, const std::any& parameters, std::any& result);
    [[nodiscard]] std::string CallBridge(const std::string& requestXml);

    host::Bridge& m_bridge;
    const ServiceFactory& m_factory;
    ExchangeLog& m_log;
    ui::Desktop& m_desktop;
};

} // namespace vellumo::service
