// The one way to SISS: shows the wait window, hands the request's text to the bridge while it is on screen, has the
// reply taken apart, and writes both to the exchange log. What goes wrong on the way and shows no box leaves a line in
// the journal. Owned by the provider.
#pragma once

#include "host/bridge.h"
#include "service/exchange_log.h"
#include "service/journal.h"
#include "service/service_factory.h"
#include "service/service_request.h"
#include "service/service_response.h"
#include "ui/desktop.h"
#include "ui/form_wait.h"

#include <any>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace vellumo::service
{

// Whom a call is about, for the lines that it may leave.
struct Subject
{
    std::string text; // "Ricetta farmaci 101, numero 1"; "": nobody in particular
    // Without a reply nobody knows whether SISS did what was asked: somebody must look.
    bool mustBeChecked = false;
};

class ServiceSender
{
public:
    ServiceSender(host::Bridge& bridge, const ServiceFactory& factory, ExchangeLog& log, ui::Desktop& desktop,
                  Journal& journal);

    // Called as soon as there is a response. Between that and the sender's return lie the end of the window and the
    // exchange log, which asks the host: time enough for a program to end with a code that nobody has written down. A
    // lack of memory in it leaves a line.
    using Received = std::function<void(ServiceResponse& response)>;

    // Null when the reply does not say how the call ended, when no window could be shown, and when memory ran out on
    // the way. A bridge that faults counts as an empty reply, so its response has failed with code "SEBCONT0001". Never
    // faults.
    [[nodiscard]] std::shared_ptr<ServiceResponse> SendServiceRequest(const ServiceRequest& request,
                                                                      const Subject& subject = {},
                                                                      const Received& received = {}) noexcept;

private:
    struct Call
    {
        const ServiceRequest& request;
        const Subject& subject;
        const Received& received;
        std::string reply; // as it came
    };

    // Null when the wait window could not be shown, or nothing came of it.
    [[nodiscard]] std::shared_ptr<ServiceResponse> SendBehindWindow(Call& call);
    // Runs while the window is on screen; the only place that calls the bridge.
    void OnWaitActivate(ui::FormWait& window, const std::any& parameters, std::any& result, Call& call);
    // False when a line tells already why nothing good came of it.
    [[nodiscard]] bool CallBridge(Call& call);
    void TellDefect(const Call& call, const ServiceResponse* response);
    void Tell(const Call& call, std::string_view what) noexcept;

    host::Bridge& m_bridge;
    const ServiceFactory& m_factory;
    ExchangeLog& m_log;
    ui::Desktop& m_desktop;
    Journal& m_journal;
};

} // namespace vellumo::service
