#include "provider/siss_provider.h"

#include "certificate/certificates.h"
#include "certificate/contacts.h"
#include "environment/siss_environment.h"
#include "environment/table_synchronisation.h"
#include "host/fault.h"
#include "patient/identification.h"
#include "patient/patient_list_import.h"
#include "prescription/prescription_check.h"
#include "prescription/registration.h"
#include "prescription/session_closing.h"
#include "prescription/session_opening.h"
#include "service/exchange_log.h"
#include "service/practice_user.h"
#include "service/provider_context.h"
#include "service/service_factory.h"
#include "service/service_sender.h"

#include <utility>

namespace vellumo::provider
{

// In the order in which the parts need each other; they go in the opposite one.
struct SISSProvider::Parts
{
    explicit Parts(Surroundings given)
        : surroundings(std::move(given))
        , factory(*surroundings.settings)
        , environment(*surroundings.settings, *surroundings.clock)
        , log(services, *surroundings.objects, *surroundings.settings, *surroundings.clock)
        , sender(*surroundings.bridge, factory, log, *surroundings.desktop)
    {
    }

    // The host may replace or clear what it handed over while an operation calls it. What the operation has in its
    // hands lives to its end.
    [[nodiscard]] host::HostServices Keep() const { return services; }

    Surroundings surroundings;
    host::HostServices services;
    service::ServiceFactory factory;
    environment::SISSEnvironment environment;
    service::ExchangeLog log;
    service::ServiceSender sender;
    service::ProviderContext context = {
        services, *surroundings.objects, *surroundings.clock, *surroundings.desktop, environment, factory, sender, log};
    bool active = true; // cleared once, never set again
};

namespace
{

host::PrescriptionSession& Require(host::PrescriptionSession* session)
{
    if (session == nullptr)
    {
        throw host::Fault("Manca la sessione di prescrizione: aprirla con ApriSessionePrescrizione.");
    }
    return *session;
}

} // namespace

SISSProvider::SISSProvider(Surroundings surroundings)
    : m_parts(std::make_unique<Parts>(std::move(surroundings)))
{
}

SISSProvider::~SISSProvider() = default;

host::HostServices& SISSProvider::Services() noexcept
{
    return m_parts->services;
}

std::int32_t SISSProvider::IdentificaPaziente(const host::Value& idPaziente, bool& gestito)
{
    gestito = true;
    const auto kept = m_parts->Keep();
    const auto outcome = patient::Identification(m_parts->context).Run(idPaziente);
    if (outcome.WithoutSession)
    {
        m_parts->active = false;
    }
    gestito = outcome.Gestito;
    return outcome.IDPaziente;
}

bool SISSProvider::Sincronizza() noexcept
{
    const auto kept = m_parts->Keep();
    return environment::TableSynchronisation(m_parts->services, m_parts->environment, *m_parts->surroundings.settings,
                                             *m_parts->surroundings.desktop)
        .Run();
}

bool SISSProvider::SincronizzaPazienti() noexcept
{
    const auto kept = m_parts->Keep();
    return patient::PatientListImport(m_parts->context).Run();
}

bool SISSProvider::IsActive() const noexcept
{
    return m_parts->active;
}

bool SISSProvider::VerificaPaziente(const host::Value&) noexcept
{
    return true;
}

std::shared_ptr<host::PrescriptionSession> SISSProvider::ApriSessionePrescrizione()
{
    const auto kept = m_parts->Keep();
    return prescription::SessionOpening(m_parts->context, *m_parts->surroundings.prescriptions).Run();
}

bool SISSProvider::RegistraPrescrizione(host::PrescriptionSession* session, const host::Value& idRicetta,
                                        std::int32_t kind)
{
    constexpr std::int32_t all = 0;
    return RegistraPrescrizioneSingola(session, idRicetta, all, kind);
}

bool SISSProvider::RegistraPrescrizioneSingola(host::PrescriptionSession* session, const host::Value& idRicetta,
                                               const host::Value& numRicetta, std::int32_t kind)
{
    const auto kept = m_parts->Keep();
    return prescription::Registration(m_parts->context, *m_parts->surroundings.prescriptions)
        .Run(Require(session), idRicetta, numRicetta, kind);
}

bool SISSProvider::ChiudiSessionePrescrizione(host::PrescriptionSession* session)
{
    const auto kept = m_parts->Keep();
    return prescription::SessionClosing(m_parts->context, *m_parts->surroundings.prescriptions).Run(Require(session));
}

bool SISSProvider::VerificaPrescrizione(const host::Value& idRicetta, std::int32_t kind)
{
    const auto kept = m_parts->Keep();
    return prescription::PrescriptionCheck(m_parts->context, *m_parts->surroundings.prescriptions)
        .Verify(idRicetta, std::nullopt, kind);
}

bool SISSProvider::VerificaPrescrizioneSingola(const host::Value& idRicetta, const host::Value& numRicetta,
                                               std::int32_t kind)
{
    const auto kept = m_parts->Keep();
    return prescription::PrescriptionCheck(m_parts->context, *m_parts->surroundings.prescriptions)
        .Verify(idRicetta, numRicetta, kind);
}

bool SISSProvider::AnnullaPrescrizione(const host::Value& idRicetta, const host::Value& numRicetta,
                                       std::int32_t value) noexcept
{
    const auto kept = m_parts->Keep();
    return prescription::PrescriptionCheck(m_parts->context, *m_parts->surroundings.prescriptions)
        .Cancel(idRicetta, numRicetta, value);
}

bool SISSProvider::InviaCertificato(host::Record* certificato) noexcept
{
    const auto kept = m_parts->Keep();
    return certificate::Certificates(m_parts->context).Send(certificato);
}

bool SISSProvider::AnnullaCertificato(host::Record* certificato) noexcept
{
    const auto kept = m_parts->Keep();
    return certificate::Certificates(m_parts->context).Cancel(certificato);
}

bool SISSProvider::InserisciContatto(const host::Value& idPaziente) noexcept
{
    const auto kept = m_parts->Keep();
    return certificate::Contacts(m_parts->context).Insert(idPaziente);
}

bool SISSProvider::IsPersonaleStudio() noexcept
{
    const auto kept = m_parts->Keep();
    return service::IsPersonaleStudio(m_parts->services);
}

} // namespace vellumo::provider
