#include "patient/identification.h"

#include "environment/siss_date_time.h"
#include "host/fault.h"
#include "patient/patient_update.h"
#include "service/practice_user.h"
#include "service/refusal.h"
#include "service/service_failure.h"
#include "service/siss_codes.h"

#include <array>
#include <string>
#include <utility>

namespace vellumo::patient
{
namespace
{

std::string SubjectOf(const host::Value& idPaziente)
{
    return idPaziente.IsNull() ? "Identificazione di un cittadino"
                               : "Identificazione del paziente " + service::IdentifierText(idPaziente);
}

} // namespace

IdentificationOutcome Identification::Run(const host::Value& idPaziente) const noexcept
{
    m_context.log.Prepare();
    const auto outcome = host::Trap(
        IdentificationOutcome(),
        [&]
        {
            Attempt attempt;
            do
            {
                attempt = Try(idPaziente);
            } while (attempt.retry);
            return attempt.outcome;
        },
        [&](const std::exception& fault) { Tell(idPaziente, service::WhyOf(fault)); });
    m_context.log.End();
    return outcome;
}

Identification::Attempt Identification::Try(const host::Value& idPaziente) const
{
    if (service::IsPersonaleStudio(m_context.services))
    {
        return {{.IDPaziente = idPaziente.ToInteger(), .Gestito = false}};
    }
    const auto type = idPaziente.IsNull() ? service::rtIdentificaCittadinoGUI : service::rtIdentificaCittadinoEsteso;
    const auto request = BuildRequest(type, idPaziente);
    if (!request)
    {
        Tell(idPaziente, service::ServiceFactory::WhyNoRequest(type) + ".");
        return {{.IDPaziente = idPaziente.ToInteger()}};
    }
    const auto response = m_context.sender.SendServiceRequest(*request, {.text = SubjectOf(idPaziente)});
    if (!response)
    {
        return {{.IDPaziente = idPaziente.ToInteger()}};
    }
    if (response->Failed())
    {
        return React(*response, idPaziente);
    }
    // One without any key would be another patient each time, and what is empty would go into all of them.
    if (!ReadIdentified(response->Data).person.CanBeFound())
    {
        m_context.desktop.Show({"Non è stata trovata nessuna corrispondenza.", "Attenzione!!", ui::Icon::Exclamation});
        return {{.IDPaziente = idPaziente.ToInteger(), .Gestito = false}};
    }
    return {{.IDPaziente = PatientUpdate(m_context).UpdatePatientFromCitizen(*response, true, true)}};
}

Identification::Attempt Identification::React(const service::ServiceResponse& response,
                                              const host::Value& idPaziente) const
{
    if (response.FailedResult == nullptr)
    {
        Tell(idPaziente, "il SISS ha risposto con errori, ma senza un esito.");
        return {};
    }
    const std::string& code = response.FailedResult->Code;
    Attempt attempt;
    switch (service::AskAfterRefusal(code, m_context.desktop))
    {
    case service::AfterRefusal::End:
        break;
    case service::AfterRefusal::GoOnWithoutSession:
        attempt.outcome = {.Gestito = false, .WithoutSession = true};
        break;
    case service::AfterRefusal::GoOnWithoutCitizen:
        attempt.outcome.Gestito = false;
        break;
    case service::AfterRefusal::Retry:
        attempt.retry = true;
        break;
    case service::AfterRefusal::Report:
        service::ReportServiceFailure(response, m_context.journal, m_context.desktop);
        // Hosts depend on this code being theirs no more after the report, while every other reported code is.
        attempt.outcome.Gestito = code == service::code::appl000091;
        break;
    }
    return attempt;
}

void Identification::Tell(const host::Value& idPaziente, const std::string& why) const
{
    m_context.journal.Write(SubjectOf(idPaziente) + ": " + why);
}

std::optional<service::ServiceRequest> Identification::BuildRequest(service::RequestTypes type,
                                                                    const host::Value& idPaziente) const
{
    return type == service::rtIdentificaCittadinoGUI ? m_context.factory.GetRequest(type)
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
