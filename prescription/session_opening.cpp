#include "prescription/session_opening.h"

#include "prescription/payload.h"
#include "service/practice_user.h"
#include "service/service_failure.h"
#include "ui/form_stampa.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace vellumo::prescription
{
namespace
{

enum class Reaction
{
    Ask,
    Silent,
    AskToRetry,
    Report,
};

struct CodeReaction
{
    std::string_view code; // exact
    Reaction reaction;
    const char* question;
    int defaultButton;
};

constexpr const char* noSession = "La sessione SISS non risulta essere attivata.\r\n"
                                  "Si vuole proseguire senza attivare la sessione?\r\n\r\n"
                                  "NB: Le prescrizioni verranno stampate senza il relatico IUP.";
constexpr const char* noCitizen =
    "Non è stato trovata nessun anagrafica, sul server SISS, corrispondente ai dati inseriti.\r\n"
    "Si vuole comunque continuare?\r\n\r\n"
    "NB: Le prescrizioni verranno stampate senza il relatico IUP.";
constexpr const char* noCard = "L'operatore non è stato autenticato al SISS o non è presente la carta operatore.\r\n"
                               "Autenticarsi al SISS e riprovare ad effettuare l'operazione.";

constexpr std::array<CodeReaction, 5> reactions = {{
    {"SEBCONT0001", Reaction::Ask, noSession, 2},
    {"APPL000103", Reaction::Silent, "", 1},
    {"SEBC00001", Reaction::Ask, noCitizen, 1},
    {"PDCAR012", Reaction::AskToRetry, noCard, 1},
    {"PDCAR001", Reaction::AskToRetry, noCard, 1},
}};
constexpr CodeReaction anyOther = {"", Reaction::Report, "", 1};

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
    const auto* row = std::ranges::find(reactions, response.FirstCode(), &CodeReaction::code);
    const CodeReaction& reaction = row == reactions.end() ? anyOther : *row;
    const auto ask = [&](ui::Buttons buttons)
    {
        return m_context.desktop.Show(
            {reaction.question, "Attenzione!!", ui::Icon::Exclamation, buttons, reaction.defaultButton});
    };
    Attempt attempt;
    switch (reaction.reaction)
    {
    case Reaction::Ask:
        if (ask(ui::Buttons::YesNo) == ui::Answer::Yes)
        {
            attempt.session = m_context.prescriptions.CreateSession();
            attempt.session->SetSenzaSISS(true);
        }
        break;
    case Reaction::Silent:
        break;
    case Reaction::AskToRetry:
        attempt.retry = ask(ui::Buttons::RetryCancel) == ui::Answer::Retry;
        break;
    case Reaction::Report:
        service::ReportServiceFailure(response, m_context.services, m_context.desktop);
        break;
    }
    return attempt;
}

} // namespace vellumo::prescription
