// Hosts that scenarios do not have: one whose session does not keep what it is given, one whose columns pad.
#include "host/fault.h"
#include "prescription/registration.h"
#include "prescription/ricetta_rows.h"
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

struct Workplace
{
    Workplace() { InstallTemplates(installation); }

    Installation installation;
    Practice practice;
    TravellingDesktop desktop;
    FakeBridge bridge;
    std::shared_ptr<FakeConnection> connection = std::make_shared<FakeConnection>();
    std::shared_ptr<FakeUtils> utils = std::make_shared<FakeUtils>();
    host::HostServices services{.connection = connection, .lockSrv = {}, .utils = utils};
    service::ServiceFactory factory{installation.settings};
    environment::SISSEnvironment environment{installation.settings, installation.clock};
    service::ExchangeLog log{services, practice, installation.settings, installation.clock};
    service::ServiceSender sender{bridge, factory, log, desktop};
    service::ProviderContext context = {
        services, practice, practice, installation.settings, installation.clock, desktop, environment,
        factory,  sender,   log};
};

} // namespace

TEST_SUITE("prescription")
{
    TEST_CASE("a code that the session does not keep goes to the journal, and the operator is told")
    {
        Workplace workplace;
        workplace.bridge.reply =
            R"(<SOAP-ENV:Envelope xmlns:SOAP-ENV="e" xmlns:m="m"><SOAP-ENV:Body>)"
            "<m:GSSC.registraPrescrizioneResponse><param><rispostaRicettaRegistrata><datiRisposta>"
            "<datiAmministrativiPrescrizione><identificativoUnivoco>0300A4000000001</identificativoUnivoco>"
            "</datiAmministrativiPrescrizione></datiRisposta></rispostaRicettaRegistrata></param>"
            "</m:GSSC.registraPrescrizioneResponse></SOAP-ENV:Body></SOAP-ENV:Envelope>";
        workplace.connection->rowsOf = [](const std::string&) -> std::vector<Columns> {
            return {{{"PAZ_Indirizzo", "Via Roma, 1"}, {"CodiceAIC_1", {}}, {"CodiceAIC_2", {}}}};
        };
        ForgetfulSession session;
        CHECK_FALSE(prescription::Registration(workplace.context).Run(session, 7, 0, host::kindDrugs));
        CAPTURE(workplace.desktop.told);
        CHECK(workplace.bridge.requests.size() == 1);
        CHECK(workplace.desktop.told.find("Sessione scaduta.") != std::string::npos);
        CHECK(workplace.utils->written ==
              std::vector<std::string>{"Ricetta 7, numero 1: codici del SISS non salvati (IUP "
                                       "0300A4000000001, protocollo ). Sessione scaduta."});
    }

    TEST_CASE("a column that pads its codes holds the same code, and only another one goes to the journal")
    {
        struct Code
        {
            const char* stored;
            const char* replaced; // in the journal; "" nothing
        };
        for (const auto& code : {Code{"0300A4000000001     ", ""}, Code{"     ", ""}, Code{"", ""},
                                 Code{"0300A4000000009     ", "0300A4000000009"}})
        {
            CAPTURE(std::string(code.stored));
            Workplace workplace;
            StoredRow row = {.columns = {{"CodiceIUP", code.stored}}};
            MemoryRecord record(row);
            const prescription::SentPrescription sent = {host::kindDrugs, std::make_shared<service::ServiceResponse>(),
                                                         std::make_shared<prescription::RicettaRecord>()};
            CHECK(prescription::RicettaRows(workplace.context).SaveWithCode(record, sent, "0300A4000000001") ==
                  nullptr);
            CHECK(row.columns.at("CodiceIUP").ToText() == "0300A4000000001");
            const std::string line = "Ricetta 0, numero 0: IUP " + std::string(code.replaced) +
                                     " sostituito nella tabella RicettaSSN, IUP attuale 0300A4000000001. "
                                     "Verificare sul SISS.";
            CHECK(workplace.utils->written ==
                  (*code.replaced == '\0' ? std::vector<std::string>() : std::vector<std::string>{line}));
        }
    }
}
