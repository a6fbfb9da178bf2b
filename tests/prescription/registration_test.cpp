// A host whose session does not keep what it is given.
#include "host/fault.h"
#include "prescription/registration.h"
#include "tests/support/fake_host.h"
#include "tests/support/golden.h"
#include "tests/support/travelling_desktop.h"

#include <doctest.h>

#include <memory>
#include <string>
#include <vector>

using namespace vellumo;
using namespace vellumo::tests;

namespace
{

class ForgetfulSession final : public host::PrescriptionSession
{
public:
    [[nodiscard]] bool SenzaSISS() const override { return false; }
    void SetSenzaSISS(bool) override {}
    [[nodiscard]] bool DaValidare() const override { return false; }
    void SetDaValidare(bool) override {}
    [[nodiscard]] std::shared_ptr<host::OpzioniRicetta> Options() const override
    {
        return std::make_shared<host::OpzioniRicetta>();
    }
    void SetOptions(const std::shared_ptr<host::OpzioniRicetta>&) override {}
    void AddResponse(std::int32_t, const std::shared_ptr<host::KeptObject>&) override
    {
        throw host::Fault("Sessione scaduta.");
    }
    [[nodiscard]] std::size_t ResponseCount(std::int32_t) const override { return 0; }
    [[nodiscard]] std::shared_ptr<host::KeptObject> Response(std::int32_t, std::size_t) const override { return {}; }
};

// A practice with the form 7, which has two prescriptions.
class Practice final : public host::HostObjects, public host::PrescriptionObjects
{
public:
    std::unique_ptr<host::Record> CreateRecord(host::RecordKind, const host::HostServices&) override { return {}; }
    std::unique_ptr<host::PracticeSettings> CreateSettings(const host::HostServices&) override
    {
        class Settings final : public host::PracticeSettings
        {
            bool Load(std::int32_t) override { return true; }
            [[nodiscard]] host::Value Get(std::string_view) const override { return {}; }
        };
        return std::make_unique<Settings>();
    }
    [[nodiscard]] std::shared_ptr<host::PrescriptionSession> CreateSession() override { return {}; }
    [[nodiscard]] std::unique_ptr<host::PrescriptionData> CreatePrescriptionData(std::int32_t,
                                                                                 const host::HostServices&) override
    {
        class Form final : public host::PrescriptionData
        {
            [[nodiscard]] std::vector<host::PrescriptionKey> List(std::int32_t, std::int32_t) override
            {
                return {{7, 1}, {7, 2}};
            }
            [[nodiscard]] std::unique_ptr<host::Record> Find(const host::PrescriptionKey&) override { return {}; }
        };
        return std::make_unique<Form>();
    }
};

} // namespace

TEST_SUITE("prescription")
{
    TEST_CASE("a code that the session does not keep goes to the journal, and the operator is told")
    {
        Installation installation;
        InstallTemplates(installation);
        Practice practice;
        TravellingDesktop desktop;
        FakeBridge bridge;
        bridge.reply = R"(<SOAP-ENV:Envelope xmlns:SOAP-ENV="e" xmlns:m="m"><SOAP-ENV:Body>)"
                       "<m:GSSC.registraPrescrizioneResponse><param><rispostaRicettaRegistrata><datiRisposta>"
                       "<datiAmministrativiPrescrizione><identificativoUnivoco>0300A4000000001</identificativoUnivoco>"
                       "</datiAmministrativiPrescrizione></datiRisposta></rispostaRicettaRegistrata></param>"
                       "</m:GSSC.registraPrescrizioneResponse></SOAP-ENV:Body></SOAP-ENV:Envelope>";
        const auto connection = std::make_shared<FakeConnection>();
        connection->rowsOf = [](const std::string&) -> std::vector<Columns> {
            return {{{"PAZ_Indirizzo", "Via Roma, 1"}, {"CodiceAIC_1", {}}, {"CodiceAIC_2", {}}}};
        };
        const auto utils = std::make_shared<FakeUtils>();
        host::HostServices services{.connection = connection, .lockSrv = {}, .utils = utils};
        const service::ServiceFactory factory(installation.settings);
        environment::SISSEnvironment environment(installation.settings, installation.clock);
        service::ExchangeLog log(services, practice, installation.settings, installation.clock);
        service::ServiceSender sender(bridge, factory, log, desktop);
        const service::ProviderContext context = {
            services, practice, practice, installation.settings, installation.clock, desktop, environment,
            factory,  sender,   log};
        ForgetfulSession session;
        CHECK_FALSE(prescription::Registration(context).Run(session, 7, 0, host::kindDrugs));
        CAPTURE(desktop.told);
        CHECK(bridge.requests.size() == 1);
        CHECK(desktop.told.find("Sessione scaduta.") != std::string::npos);
        CHECK(utils->written == std::vector<std::string>{"Ricetta 7, numero 1: codici del SISS non salvati (IUP "
                                                         "0300A4000000001, protocollo ). Sessione scaduta."});
    }
}
