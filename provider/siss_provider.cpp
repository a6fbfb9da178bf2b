#include "provider/siss_provider.h"

#include "certificate/certificates.h"
#include "certificate/contacts.h"
#include "environment/siss_environment.h"
#include "environment/table_synchronisation.h"
#include "host/fault.h"
#include "patient/identification.h"
#include "patient/patient_list_import.h"
#include "prescription/left_codes.h"
#include "prescription/prescription_check.h"
#include "prescription/registration.h"
#include "prescription/session_closing.h"
#include "prescription/session_opening.h"
#include "service/exchange_log.h"
#include "service/practice_user.h"
#include "service/provider_context.h"
#include "service/service_factory.h"
#include "service/service_sender.h"
#include "service/trace_folder.h"

#include <utility>
#include <vector>

namespace vellumo::provider
{

using service::ProviderContext;

// Owns what the operations work with, in the order in which the parts need each other, and is the one way to run them.
class SISSProvider::HostCalls
{
public:
    explicit HostCalls(PlatformParts platform)
        : m_platform(std::move(platform))
        , m_factory(*m_platform.settings)
        , m_environment(*m_platform.settings, *m_platform.clock)
        , m_traces(m_platform.traces ? std::move(m_platform.traces)
                                     : std::make_unique<service::TraceFolder>(*m_platform.settings, *m_platform.clock))
        , m_journal(m_services, *m_traces)
        , m_log(m_services, *m_platform.objects, *m_platform.settings, *m_platform.clock)
        , m_sender(*m_platform.bridge, m_factory, m_log, *m_platform.desktop, m_journal)
    {
    }

    // The host may replace or clear what it handed over while an operation calls it, any number of times. What the
    // operation has in its hands lives to its end.
    //
    // It may also call from a timer while a window of an operation is open. A second operation would take its windows,
    // its exchange log and its transaction for its own: it faults, after a line in the journal.
    template <class Operation>
    auto Run(const char* name, Operation&& operation)
    {
        if (m_operation != nullptr)
        {
            Refuse(name);
        }
        const Running running(*this, name);
        TellLeftCodes();
        return std::forward<Operation>(operation)(m_context);
    }

    // The same for an operation that answers False after a fault.
    template <class Operation>
    bool RunTrapped(const char* name, Operation&& operation) noexcept
    {
        return host::Trap(false, [&] { return Run(name, std::forward<Operation>(operation)); });
    }

    // For those that only look into the database: whatever else is under way.
    template <class Operation>
    auto Look(Operation&& operation)
    {
        const Running running(*this, m_operation);
        if (m_operation == nullptr)
        {
            TellLeftCodes();
        }
        return std::forward<Operation>(operation)(m_context);
    }

    template <class Part>
    void Replace(std::shared_ptr<Part> host::HostServices::*part, std::shared_ptr<Part> value)
    {
        if (m_running > 0)
        {
            m_replaced.push_back(m_services.*part);
        }
        (m_services.*part).swap(value);
    }

    [[nodiscard]] std::int32_t& Studio() noexcept { return m_services.studio; }

private:
    // One call among those that are under way: the host may make another one from inside its own objects.
    class Running
    {
    public:
        Running(HostCalls& calls, const char* operation)
            : m_calls(calls)
            , m_outer(std::exchange(calls.m_operation, operation))
        {
            ++m_calls.m_running;
        }
        ~Running()
        {
            m_calls.m_operation = m_outer;
            if (--m_calls.m_running == 0)
            {
                const auto released = std::exchange(m_calls.m_replaced, {}); // which may call the provider
            }
        }
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;

    private:
        HostCalls& m_calls;
        const char* m_outer;
    };

    [[noreturn]] void Refuse(const char* name)
    {
        const auto why = std::string(name) + " non eseguita: è in corso " + m_operation + ".";
        m_journal.Write(why);
        throw host::Fault(why + " Ripeterla quando l'altra è terminata.");
    }

    // Once, as soon as the host has handed over what it takes: codes that a program lost which ended with a session
    // open.
    void TellLeftCodes()
    {
        if (!m_toldLeftCodes && m_services.utils && m_services.connection)
        {
            m_toldLeftCodes = true;
            m_traces->Recover(m_services.studio, [&](const host::LeftCode& code)
                              { return prescription::LeftCodes(m_context).Tell(code); });
        }
    }

    PlatformParts m_platform;
    host::HostServices m_services;
    std::vector<std::shared_ptr<void>> m_replaced; // during the calls that are under way
    int m_running = 0;
    const char* m_operation = nullptr; // the one that is under way
    service::ServiceFactory m_factory;
    environment::SISSEnvironment m_environment;
    std::unique_ptr<host::Traces> m_traces;
    service::Journal m_journal;
    bool m_toldLeftCodes = false;
    service::ExchangeLog m_log;
    service::ServiceSender m_sender;
    const service::ProviderContext m_context = {.services = m_services,
                                                .objects = *m_platform.objects,
                                                .prescriptions = *m_platform.prescriptions,
                                                .settings = *m_platform.settings,
                                                .clock = *m_platform.clock,
                                                .desktop = *m_platform.desktop,
                                                .environment = m_environment,
                                                .factory = m_factory,
                                                .sender = m_sender,
                                                .log = m_log,
                                                .journal = m_journal};
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

SISSProvider::SISSProvider(PlatformParts platform)
    : m_calls(std::make_unique<HostCalls>(std::move(platform)))
{
}

SISSProvider::~SISSProvider() = default;

void SISSProvider::SetConnection(std::shared_ptr<host::Connection> connection)
{
    m_calls->Replace(&host::HostServices::connection, std::move(connection));
}

void SISSProvider::SetLockSrv(std::shared_ptr<host::LockSrv> lockSrv)
{
    m_calls->Replace(&host::HostServices::lockSrv, std::move(lockSrv));
}

void SISSProvider::SetUtils(std::shared_ptr<host::Utils> utils)
{
    m_calls->Replace(&host::HostServices::utils, std::move(utils));
}

void SISSProvider::SetStudio(std::int32_t studio) noexcept
{
    m_calls->Studio() = studio;
}

std::int32_t SISSProvider::Studio() const noexcept
{
    return m_calls->Studio();
}

std::int32_t SISSProvider::IdentificaPaziente(const host::Value& idPaziente, bool& gestito)
{
    gestito = true;
    const auto outcome =
        host::Trap(patient::IdentificationOutcome(),
                   [&]
                   {
                       return m_calls->Run("IdentificaPaziente", [&](const ProviderContext& context)
                                           { return patient::Identification(context).Run(idPaziente); });
                   });
    if (outcome.WithoutSession)
    {
        m_active = false;
    }
    gestito = outcome.Gestito;
    return outcome.IDPaziente;
}

bool SISSProvider::Sincronizza() noexcept
{
    return m_calls->RunTrapped("Sincronizza",
                               [](const ProviderContext& context)
                               {
                                   const auto tell = [&](const std::string& what, const std::exception& cause)
                                   { context.journal.Write(what + ": " + service::WhyOf(cause)); };
                                   return environment::TableSynchronisation(context.services, context.environment,
                                                                            context.settings, context.desktop, tell)
                                       .Run();
                               });
}

bool SISSProvider::SincronizzaPazienti() noexcept
{
    return m_calls->RunTrapped("SincronizzaPazienti", [](const ProviderContext& context)
                               { return patient::PatientListImport(context).Run(); });
}

bool SISSProvider::IsActive() const noexcept
{
    return m_active;
}

bool SISSProvider::VerificaPaziente(const host::Value&) noexcept
{
    return true;
}

std::shared_ptr<host::PrescriptionSession> SISSProvider::ApriSessionePrescrizione()
{
    return m_calls->Run("ApriSessionePrescrizione",
                        [](const ProviderContext& context) { return prescription::SessionOpening(context).Run(); });
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
    return m_calls->Run(
        "RegistraPrescrizione", [&](const ProviderContext& context)
        { return prescription::Registration(context).Run(Require(session), idRicetta, numRicetta, kind); });
}

bool SISSProvider::ChiudiSessionePrescrizione(host::PrescriptionSession* session)
{
    return m_calls->Run("ChiudiSessionePrescrizione", [&](const ProviderContext& context)
                        { return prescription::SessionClosing(context).Run(Require(session)); });
}

bool SISSProvider::VerificaPrescrizione(const host::Value& idRicetta, std::int32_t kind)
{
    return m_calls->Look([&](const ProviderContext& context)
                         { return prescription::PrescriptionCheck(context).Verify(idRicetta, std::nullopt, kind); });
}

bool SISSProvider::VerificaPrescrizioneSingola(const host::Value& idRicetta, const host::Value& numRicetta,
                                               std::int32_t kind)
{
    return m_calls->Look([&](const ProviderContext& context)
                         { return prescription::PrescriptionCheck(context).Verify(idRicetta, numRicetta, kind); });
}

bool SISSProvider::AnnullaPrescrizione(const host::Value& idRicetta, const host::Value& numRicetta,
                                       std::int32_t value) noexcept
{
    return m_calls->RunTrapped("AnnullaPrescrizione",
                               [&](const ProviderContext& context) {
                                   return prescription::PrescriptionCheck(context).Cancel(idRicetta, numRicetta, value);
                               });
}

bool SISSProvider::InviaCertificato(host::Record* certificato) noexcept
{
    return m_calls->RunTrapped("InviaCertificato", [&](const ProviderContext& context)
                               { return certificate::Certificates(context).Send(certificato); });
}

bool SISSProvider::AnnullaCertificato(host::Record* certificato) noexcept
{
    return m_calls->RunTrapped("AnnullaCertificato", [&](const ProviderContext& context)
                               { return certificate::Certificates(context).Cancel(certificato); });
}

bool SISSProvider::InserisciContatto(const host::Value& idPaziente) noexcept
{
    return m_calls->RunTrapped("InserisciContatto", [&](const ProviderContext& context)
                               { return certificate::Contacts(context).Insert(idPaziente); });
}

bool SISSProvider::IsPersonaleStudio() noexcept
{
    return m_calls->Look([](const ProviderContext& context) { return service::IsPersonaleStudio(context.services); });
}

} // namespace vellumo::provider
