#include "service/service_sender.h"

#include "host/fault.h"
#include "host/text.h"

#include <new>

namespace vellumo::service
{

ServiceSender::ServiceSender(host::Bridge& bridge, const ServiceFactory& factory, ExchangeLog& log,
                             ui::Desktop& desktop, Journal& journal)
    : m_bridge(bridge)
    , m_factory(factory)
    , m_log(log)
    , m_desktop(desktop)
    , m_journal(journal)
{
}

std::shared_ptr<ServiceResponse> ServiceSender::SendServiceRequest(const ServiceRequest& request,
                                                                   const Subject& subject,
                                                                   const Received& received) noexcept
{
    Call call{request, subject, received, {}};
    auto response = host::Trap(std::shared_ptr<ServiceResponse>(), [&] { return SendBehindWindow(call); });
    m_log.Write(request, call.reply);
    return response;
}

std::shared_ptr<ServiceResponse> ServiceSender::SendBehindWindow(Call& call)
{
    ui::FormWait window;
    window.Parameters() = call.request;
    window.OnActivate = [&](ui::FormWait& sender, const std::any& parameters, std::any& result)
    { OnWaitActivate(sender, parameters, result, call); };
    // A window that fails when the bridge has replied must not take the reply with it.
    try
    {
        m_desktop.ShowModal(window);
    }
    catch (const std::exception& fault)
    {
        Tell(call, "la finestra di attesa non funziona: " + WhyOf(fault));
    }
    const auto* result = std::any_cast<std::shared_ptr<ServiceResponse>>(&window.Result());
    return result != nullptr ? *result : nullptr;
}

void ServiceSender::OnWaitActivate(ui::FormWait& window, const std::any& parameters, std::any& result, Call& call)
{
    const auto* request = std::any_cast<ServiceRequest>(&parameters);
    if (request == nullptr)
    {
        return;
    }
    window.SetOperazione(request->Name());
    try
    {
        const bool isUntold = CallBridge(call);
        const auto response = m_factory.GetResponse(call.reply);
        result = response;
        if (response && call.received)
        {
            call.received(*response);
        }
        if (isUntold)
        {
            TellDefect(call, response.get());
        }
        if (response && !response->IsXml)
        {
            response->IsTold = true;
        }
    }
    catch (const std::bad_alloc&)
    {
        Tell(call, "memoria insufficiente per la risposta del SISS.");
    }
}

bool ServiceSender::CallBridge(Call& call)
{
    bool hasText = true;
    try
    {
        const std::string text = call.request.ToString();
        hasText = !text.empty();
        if (!hasText)
        {
            Tell(call, "il modello della richiesta non è un documento XML.");
        }
        call.reply = m_bridge.CallSebMethod(text);
        return hasText;
    }
    catch (const std::bad_alloc&)
    {
        throw; // what came back is not known; as an empty reply it would say that the session is not active
    }
    catch (const std::exception& fault)
    {
        if (hasText)
        {
            Tell(call, "il client SISS ha dato un errore: " + WhyOf(fault));
        }
        return false;
    }
}

void ServiceSender::TellDefect(const Call& call, const ServiceResponse* response)
{
    if (response == nullptr)
    {
        Tell(call, "risposta del SISS senza esito (elemento " + ServiceFactory::ReplyElement(call.reply) + ").");
    }
    else if (!response->IsXml)
    {
        Tell(call, "la risposta del SISS non è un documento XML (" + std::to_string(host::CharacterCount(call.reply)) +
                       " caratteri).");
    }
}

void ServiceSender::Tell(const Call& call, std::string_view what) noexcept
{
    host::PassOver(
        [&]
        {
            const std::string who = call.subject.text.empty() ? "" : call.subject.text + ": ";
            m_journal.Write(call.subject.mustBeChecked ? Journal::Urgency::ToCheck : Journal::Urgency::Note,
                            (who + call.request.Name()).append(": ").append(what));
        });
}

} // namespace vellumo::service
