#include "patient/identification.h"

#include "environment/siss_date_time.h"
#include "host/fault.h"
#include "patient/patient_update.h"
#include "service/practice_user.h"
#include "service/service_failure.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace vellumo::patient
{
namespace
{

constexpr const char* attention = "Attenzione!!";

enum class Reaction
{
    AskToGoOnWithoutSession,
    Silent,
    AskToGoOnWithoutCitizen,
    Report,
    AskToRetry,
    ReportAndLeaveToHost,
};

struct CodeReaction
{
    std::string_view code; // exact
    Reaction reaction;
};

// Hosts depend on "APPL000091" being theirs no more after the report while every other code is.
constexpr std::array<CodeReaction, 6> reactions = {{
    {"SEBCONT0001", Reaction::AskToGoOnWithoutSession},
    {"APPL000103", Reaction::Silent},
    {"SEBC00001", Reaction::AskToGoOnWithoutCitizen},
    {"APPL000091", Reaction::Report},
    {"PDCAR012", Reaction::AskToRetry},
    {"PDCAR001", Reaction::AskToRetry},
}};

Reaction ReactionTo(std::string_view code)
{
    const auto* row = std::ranges::find(reactions, code, &CodeReaction::code);
    return row == reactions.end() ? Reaction::ReportAndLeaveToHost : row->reaction;
}

bool IsYes(ui::Answer answer)
{
    return answer == ui::Answer::Yes;
}

} // namespace

IdentificationOutcome Identification::Run(const host::Value& idPaziente) const noexcept
{
    IdentificationOutcome outcome;
    m_context.log.Prepare();
    host::PassOver(
        [&]
        {
            while (Attempt(idPaziente, outcome))
            {
            }
        });
    m_context.log.End();
    return outcome;
}

bool Identification::Attempt(const host::Value& idPaziente, IdentificationOutcome& outcome) const
{
    outcome = {};
    if (service::IsPersonaleStudio(m_context.services))
    {
        outcome.IDPaziente = idPaziente.ToInteger();
        outcome.Gestito = false;
        return false;
    }
    const auto request = BuildRequest(idPaziente);
    const auto response = request ? m_context.sender.SendServiceRequest(*request) : nullptr;
    if (!response)
    {
        outcome.IDPaziente = idPaziente.ToInteger();
        return false;
    }
    if (response->Failed())
    {
        return response->FailedResult != nullptr && React(*response, outcome);
    }
    if (response->Data.Text().empty())
    {
        m_context.desktop.Show({"Non è stata trovata nessuna corrispondenza.", attention, ui::Icon::Exclamation});
        outcome.IDPaziente = idPaziente.ToInteger();
        outcome.Gestito = false;
        return false;
    }
    outcome.IDPaziente = PatientUpdate(m_context).UpdatePatientFromCitizen(*response, true, true);
    return false;
}

bool Identification::React(const service::ServiceResponse& response, IdentificationOutcome& outcome) const
{
    ui::Desktop& desktop = m_context.desktop;
    switch (ReactionTo(response.FailedResult->Code))
    {
    case Reaction::AskToGoOnWithoutSession:
        outcome.WithoutSession = IsYes(desktop.Show({"La sessione SISS non risulta essere attivata.\r\n"
                                                     "Si vuole proseguire senza attivare la sessione?",
                                                     attention, ui::Icon::Exclamation, ui::Buttons::YesNo, 2}));
        outcome.Gestito = !outcome.WithoutSession;
        break;
    case Reaction::Silent:
        break;
    case Reaction::AskToGoOnWithoutCitizen:
        outcome.Gestito =
            !IsYes(desktop.Show({"Non è stato trovata nessun anagrafica, sul server SISS, corrispondente ai "
                                 "dati inseriti.\r\nSi vuole comunque continuare?",
                                 attention, ui::Icon::Exclamation, ui::Buttons::YesNo}));
        break;
    case Reaction::Report:
        service::ReportServiceFailure(response, m_context.services, desktop);
        break;
    case Reaction::AskToRetry:
        return desktop.Show({"L'operatore non è stato autenticato al SISS o non è presente la carta operatore.\r\n"
                             "Autenticarsi al SISS e riprovare ad effettuare l'operazione.",
                             attention, ui::Icon::Exclamation, ui::Buttons::RetryCancel}) == ui::Answer::Retry;
    case Reaction::ReportAndLeaveToHost:
        service::ReportServiceFailure(response, m_context.services, desktop);
        outcome.Gestito = false;
        break;
    }
    return false;
}

std::optional<service::ServiceRequest> Identification::BuildRequest(const host::Value& idPaziente) const
{
    return idPaziente.IsNull() ? m_context.factory.GetRequest(service::rtIdentificaCittadinoGUI)
                               : BuildExtendedIdentificationRequest(idPaziente);
}

std::optional<service::ServiceRequest>
Identification::BuildExtendedIdentificationRequest(const host::Value& idPaziente) const
{
    constexpr std::array<std::pair<const char*, const char*>, 4> texts = {{
        {"profiloCittadino/nome", "Nome"},
        {"profiloCittadino/cognome", "Cognome"},
        {"profiloCittadino/sesso", "Sesso"},
        {"profiloCittadino/codiceFiscale", "CodiceFiscale"},
    }};
    const auto patient = m_context.objects.CreateRecord(host::RecordKind::Patient, m_context.services);
    const bool known = patient->Load(idPaziente.ToInteger());
    auto request = m_context.factory.GetRequest(service::rtIdentificaCittadinoEsteso);
    if (request)
    {
        request->SetData("profiloCittadino/idAssistito", "");
        for (const auto& [path, column] : texts)
        {
            request->SetData(path, known ? patient->Get(column).ToText() : std::string());
        }
        const host::Value born = known ? patient->Get("DataNascita") : host::Value();
        if (!born.ToText().empty())
        {
            request->SetData("profiloCittadino/dataNascita", environment::StoredDate(born));
        }
    }
    return request;
}

} // namespace vellumo::patient
