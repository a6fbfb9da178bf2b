#include "torture/client.h"

#include "host/fault.h"
#include "torture/host.h"
#include "torture/outside_call.h"

#include <exception>
#include <new>
#include <utility>

namespace vellumo::torture
{
namespace
{

// A lack of memory reaches the host as an error like any other.
template <class Work>
auto Enter(Operation operation, Work&& work)
{
    try
    {
        const InLibrary inside(operation);
        return std::forward<Work>(work)();
    }
    catch (const std::exception& fault)
    {
        Seen().isWithoutProvider =
            Seen().isWithoutProvider || operation == Operation::Creation || operation == Operation::HandOver;
        if (dynamic_cast<const std::bad_alloc*>(&fault) != nullptr)
        {
            throw host::Fault("Memoria esaurita.");
        }
        throw;
    }
}

class Client final : public norda::ProviderClient
{
public:
    explicit Client(std::unique_ptr<norda::ProviderClient> client)
        : m_client(std::move(client))
    {
    }

    void SetConnection(std::shared_ptr<host::Connection> connection) override
    {
        HandOver(&norda::ProviderClient::SetConnection, std::move(connection));
    }
    void SetLockSrv(std::shared_ptr<host::LockSrv> lockSrv) override
    {
        HandOver(&norda::ProviderClient::SetLockSrv, std::move(lockSrv));
    }
    void SetUtils(std::shared_ptr<host::Utils> utils) override
    {
        HandOver(&norda::ProviderClient::SetUtils, std::move(utils));
    }
    void SetStudio(std::int32_t studio) override { m_client->SetStudio(studio); }
    [[nodiscard]] std::int32_t Studio() override { return m_client->Studio(); }

    std::int32_t IdentificaPaziente(const norda::Argument& idPaziente, bool& gestito) override
    {
        return Enter(Operation::IdentificaPaziente, [&] { return m_client->IdentificaPaziente(idPaziente, gestito); });
    }
    [[nodiscard]] bool IsActive() override
    {
        return Enter(Operation::IsActive, [&] { return m_client->IsActive(); });
    }
    [[nodiscard]] bool VerificaPaziente(const norda::Argument& idPaziente) override
    {
        return Enter(Operation::VerificaPaziente, [&] { return m_client->VerificaPaziente(idPaziente); });
    }
    [[nodiscard]] bool IsPersonaleStudio() override
    {
        return Enter(Operation::IsPersonaleStudio, [&] { return m_client->IsPersonaleStudio(); });
    }
    bool Sincronizza() override
    {
        return Enter(Operation::Sincronizza, [&] { return m_client->Sincronizza(); });
    }
    bool SincronizzaPazienti() override
    {
        return Enter(Operation::SincronizzaPazienti, [&] { return m_client->SincronizzaPazienti(); });
    }
    [[nodiscard]] std::shared_ptr<norda::PrescriptionSession> ApriSessionePrescrizione() override
    {
        return Enter(Operation::ApriSessionePrescrizione, [&] { return m_client->ApriSessionePrescrizione(); });
    }
    bool RegistraPrescrizione(const std::shared_ptr<norda::PrescriptionSession>& session,
                              const norda::Argument& idRicetta, std::int32_t kind) override
    {
        return Enter(Operation::RegistraPrescrizione,
                     [&] { return m_client->RegistraPrescrizione(session, idRicetta, kind); });
    }
    bool RegistraPrescrizioneSingola(const std::shared_ptr<norda::PrescriptionSession>& session,
                                     const norda::Argument& idRicetta, const norda::Argument& numRicetta,
                                     std::int32_t kind) override
    {
        return Enter(Operation::RegistraPrescrizioneSingola,
                     [&] { return m_client->RegistraPrescrizioneSingola(session, idRicetta, numRicetta, kind); });
    }
    bool ChiudiSessionePrescrizione(const std::shared_ptr<norda::PrescriptionSession>& session) override
    {
        return Enter(Operation::ChiudiSessionePrescrizione,
                     [&] { return m_client->ChiudiSessionePrescrizione(session); });
    }
    [[nodiscard]] bool VerificaPrescrizione(const norda::Argument& idRicetta, std::int32_t kind) override
    {
        return Enter(Operation::VerificaPrescrizione, [&] { return m_client->VerificaPrescrizione(idRicetta, kind); });
    }
    [[nodiscard]] bool VerificaPrescrizioneSingola(const norda::Argument& idRicetta, const norda::Argument& numRicetta,
                                                   std::int32_t kind) override
    {
        return Enter(Operation::VerificaPrescrizioneSingola,
                     [&] { return m_client->VerificaPrescrizioneSingola(idRicetta, numRicetta, kind); });
    }
    bool AnnullaPrescrizione(const norda::Argument& idRicetta, const norda::Argument& numRicetta,
                             std::int32_t value) override
    {
        return Enter(Operation::AnnullaPrescrizione,
                     [&] { return m_client->AnnullaPrescrizione(idRicetta, numRicetta, value); });
    }
    [[nodiscard]] host::OpzioniRicetta OptionsOf(const norda::PrescriptionSession& session) override
    {
        return m_client->OptionsOf(session);
    }
    [[nodiscard]] bool InviaCertificato(const norda::Argument& certificato) override
    {
        const auto given = Given(certificato);
        return Enter(Operation::InviaCertificato, [&] { return m_client->InviaCertificato(given); });
    }
    [[nodiscard]] bool AnnullaCertificato(const norda::Argument& certificato) override
    {
        const auto given = Given(certificato);
        return Enter(Operation::AnnullaCertificato, [&] { return m_client->AnnullaCertificato(given); });
    }
    [[nodiscard]] bool InserisciContatto(const norda::Argument& idPaziente) override
    {
        return Enter(Operation::InserisciContatto, [&] { return m_client->InserisciContatto(idPaziente); });
    }
    void LetGo() override { m_client->LetGo(); }
    [[nodiscard]] bool Release() override
    {
        return Enter(Operation::Release, [&] { return m_client->Release(); });
    }

private:
    template <class Part>
    void HandOver(void (norda::ProviderClient::*set)(std::shared_ptr<Part>), std::shared_ptr<Part> part)
    {
        auto given = Tortured(std::move(part));
        Enter(Operation::HandOver, [&] { (*m_client.*set)(std::move(given)); });
    }

    static norda::Argument Given(const norda::Argument& certificate)
    {
        auto given = certificate;
        given.record = Tortured(std::move(given.record));
        return given;
    }

    std::unique_ptr<norda::ProviderClient> m_client;
};

} // namespace

std::unique_ptr<norda::ProviderClient>
CreateTortured(const std::function<std::unique_ptr<norda::ProviderClient>()>& create)
{
    return std::make_unique<Client>(Enter(Operation::Creation, create));
}

} // namespace vellumo::torture
