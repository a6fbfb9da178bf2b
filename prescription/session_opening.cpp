#include "prescription/session_opening.h"

#include "prescription/payload.h"
#include "service/practice_user.h"
#include "service/refusal.h"
#include "service/service_failure.h"
#include "ui/form_stampa.h"

namespace vellumo::prescription
{
namespace
{

constexpr const char* withoutCode = "NB: Le prescrizioni verranno stampate senza il relatico IUP.";

} // namespace

std::shared_ptr<host::PrescriptionSession> SessionOpening::Run() const
{
    const auto options = std::make_shared<host::OpzioniRicetta>();
    options->TipoRicetta = IsElectronicByDefault() ? host::OpzioniRicetta::electronic : host::OpzioniRicetta::paperForm;
    Attempt attempt;
    do
    {
        attempt = Try(*options);
    } while (attempt.retry);
    if (attempt.session)
    {
        attempt.session->SetOptions(options);
    }
    return attempt.session;
}

bool SessionOpening::IsElectronicByDefault() const
{
    const auto settings = m_context.objects.CreateSettings(m_context.services);
    return settings->Load(m_context.services.studio) &&
           m_context.services.RequireUtils().ToBoolean(settings->Get("CCECartellaElettronica"));
}

SessionOpening::Attempt SessionOpening::Try(host::OpzioniRicetta& options) const
{
    if (service::IsPracticeStaff(m_context.services))
    {
        auto session = m_context.prescriptions.CreateSession();
        session->SetDaValidare(true);
        return {std::move(session)};
    }
    ui::FormStampa window(options);
    m_context.desktop.ShowModal(window);
    if (window.Result() == ui::FormStampa::Decision::Cancelled)
    {
        return {};
    }
    auto request = m_context.factory.GetRequest(service::rtIniziaFasePresrittiva);
    if (!request)
    {
        m_context.journal.Write("Apertura della sessione di prescrizione: " +
                                service::ServiceFactory::WhyNoRequest(service::rtIniziaFasePresrittiva) + ".");
        return {};
    }
    WriteDataSetVersion(options, *request);
    const auto response = m_context.sender.SendServiceRequest(*request);
    if (!response)
    {
        return {};
    }
    return response->Failed() ? React(*response) : Attempt{m_context.prescriptions.CreateSession()};
}

SessionOpening::Attempt SessionOpening::React(const service::ServiceResponse& response) const
{
    Attempt attempt;
    switch (service::AskAfterRefusal(response.FirstCode(), m_context.desktop, withoutCode))
    {
    case service::AfterRefusal::End:
        break;
    case service::AfterRefusal::GoOnWithoutSession:
    case service::AfterRefusal::GoOnWithoutCitizen:
        attempt.session = m_context.prescriptions.CreateSession();
        attempt.session->SetSenzaSISS(true);
        break;
    case service::AfterRefusal::Retry:
        attempt.retry = true;
        break;
    case service::AfterRefusal::Report:
        service::ReportServiceFailure(response, m_context.journal, m_context.desktop);
        break;
    }
    return attempt;
}

} // namespace vellumo::prescription
