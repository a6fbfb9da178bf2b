#include "provider/siss_provider.h"
#include "tests/support/fake_host.h"
#include "tests/support/installation.h"

#include <doctest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

using namespace vellumo;
using namespace vellumo::tests;

namespace
{

// A host that, at each call into any object that it handed over, puts others in the place of all of them: one whose
// connection broke does so from inside its own helpers.
class RestlessHost
{
public:
    explicit RestlessHost(provider::SISSProvider& provider)
        : m_provider(provider)
    {
        HandOver();
    }

    [[nodiscard]] std::size_t HandedOver() const { return m_handedOver.size(); }
    [[nodiscard]] std::size_t Living() const
    {
        return static_cast<std::size_t>(
            std::ranges::count_if(m_handedOver, [](const auto& part) { return !part.expired(); }));
    }
    // Whether each object still lived whenever one of them was called.
    [[nodiscard]] bool AllLived() const { return m_allLived; }

    // Some member of one of its objects is running.
    void Called()
    {
        HandOver();
        m_allLived = m_allLived && Living() == HandedOver();
    }

private:
    void HandOver();
    template <class Part>
    std::shared_ptr<Part> Make()
    {
        auto part = std::make_shared<Part>(*this);
        m_handedOver.push_back(part);
        return part;
    }

    provider::SISSProvider& m_provider;
    std::vector<std::weak_ptr<void>> m_handedOver;
    bool m_allLived = true;
};

class RestlessConnection final : public host::Connection
{
public:
    explicit RestlessConnection(RestlessHost& owner)
        : m_owner(owner)
    {
    }
    std::unique_ptr<host::Recordset> Open(const std::string&) override
    {
        m_owner.Called();
        return std::make_unique<MemoryRecordset>();
    }
    void BeginTransaction() override { m_owner.Called(); }
    void CommitTransaction() override {}
    void RollbackTransaction() override {}

private:
    RestlessHost& m_owner;
};

class RestlessLockSrv final : public host::LockSrv
{
public:
    explicit RestlessLockSrv(RestlessHost& owner)
        : m_owner(owner)
    {
    }
    std::int32_t UserId() override
    {
        m_owner.Called();
        return 1;
    }

private:
    RestlessHost& m_owner;
};

class RestlessUtils final : public host::Utils
{
public:
    explicit RestlessUtils(RestlessHost& owner)
        : m_owner(owner)
    {
    }
    host::Value LookUpValue(const std::string&, const host::Parameters&) override { return Answer({}); }
    std::unique_ptr<host::Recordset> OpenRecordset(const std::string&, const host::Parameters&) override
    {
        m_owner.Called();
        return std::make_unique<MemoryRecordset>();
    }
    host::Value LookUpKey(const std::string&, const std::string&, const std::string&, const host::Parameters&) override
    {
        return Answer({});
    }
    void Execute(const std::string&, const host::Parameters&) override { m_owner.Called(); }
    host::Value WriteRow(const std::string&, const std::string&, const host::Value&,
                         const std::vector<host::ColumnValue>&) override
    {
        return Answer(1);
    }
    host::Value TableDate(const std::string&) override { return Answer({}); }
    void StoreTableDate(const std::string&, host::Date, std::int32_t) override { m_owner.Called(); }
    void RecordServiceError(const std::string&) override { m_owner.Called(); }
    bool ToBoolean(const host::Value&) override { return Answer(false).ToBoolean(); }

private:
    host::Value Answer(const host::Value& value)
    {
        m_owner.Called();
        return value;
    }

    RestlessHost& m_owner;
};

void RestlessHost::HandOver()
{
    m_provider.SetConnection(Make<RestlessConnection>());
    m_provider.SetLockSrv(Make<RestlessLockSrv>());
    m_provider.SetUtils(Make<RestlessUtils>());
}

// A practice that has settings and patients, whom the host's classes read without its connection.
class PracticeObjects final : public host::HostObjects
{
public:
    std::unique_ptr<host::Record> CreateRecord(host::RecordKind, const host::HostServices&) override
    {
        return std::make_unique<MemoryRecord>(row);
    }
    std::unique_ptr<host::PracticeSettings> CreateSettings(const host::HostServices&) override
    {
        class Settings final : public host::PracticeSettings
        {
            bool Load(std::int32_t) override { return true; }
            [[nodiscard]] host::Value Get(std::string_view) const override { return true; }
        };
        return std::make_unique<Settings>();
    }

    StoredRow row;
};

// A host without prescriptions, whose sessions wait for the doctor.
class EmptyForms final : public host::PrescriptionObjects
{
public:
    class Session final : public host::PrescriptionSession
    {
    public:
        explicit Session(bool waits)
            : m_waits(waits)
        {
        }
        [[nodiscard]] bool SenzaSISS() const override { return false; }
        void SetSenzaSISS(bool) override {}
        [[nodiscard]] bool DaValidare() const override { return m_waits; }
        void SetDaValidare(bool) override {}
        [[nodiscard]] std::shared_ptr<host::OpzioniRicetta> Options() const override { return nullptr; }
        void SetOptions(const std::shared_ptr<host::OpzioniRicetta>&) override {}
        void AddResponse(std::int32_t, const std::shared_ptr<host::KeptObject>&) override {}
        [[nodiscard]] std::size_t ResponseCount(std::int32_t) const override { return 0; }
        [[nodiscard]] std::shared_ptr<host::KeptObject> Response(std::int32_t, std::size_t) const override
        {
            return nullptr;
        }

    private:
        bool m_waits;
    };

    std::shared_ptr<host::PrescriptionSession> CreateSession() override { return std::make_shared<Session>(false); }
    std::unique_ptr<host::PrescriptionData> CreatePrescriptionData(std::int32_t, const host::HostServices&) override
    {
        class Form final : public host::PrescriptionData
        {
            std::vector<host::PrescriptionKey> List(std::int32_t, std::int32_t) override { return {}; }
            std::unique_ptr<host::Record> Find(const host::PrescriptionKey&) override { return nullptr; }
        };
        return std::make_unique<Form>();
    }
};

// Chooses one file and takes whatever a window starts with.
class OneFileDesktop final : public ui::Desktop
{
public:
    explicit OneFileDesktop(std::string file)
        : m_file(std::move(file))
    {
    }

    ui::Answer Show(const ui::Prompt&) override { return ui::Answer::Ok; }
    void ShowModal(ui::Form& form) override { form.Activated(); }
    std::optional<std::string> AskFile(const std::string&, const std::string&) override { return m_file; }

private:
    std::string m_file;
};

struct Operation
{
    std::string name;
    void (*call)(provider::SISSProvider& provider);
};

const Operation operations[] = {
    {"IdentificaPaziente",
     [](auto& provider)
     {
         bool gestito = false;
         provider.IdentificaPaziente({}, gestito);
     }},
    {"Sincronizza", [](auto& provider) { CHECK(provider.Sincronizza()); }},
    {"SincronizzaPazienti", [](auto& provider) { CHECK(provider.SincronizzaPazienti()); }},
    {"ApriSessionePrescrizione", [](auto& provider) { CHECK(provider.ApriSessionePrescrizione()); }},
    {"RegistraPrescrizione",
     [](auto& provider)
     {
         EmptyForms::Session session(false);
         CHECK(provider.RegistraPrescrizione(&session, 7, host::kindDrugs));
     }},
    {"RegistraPrescrizioneSingola",
     [](auto& provider)
     {
         EmptyForms::Session session(false);
         CHECK(provider.RegistraPrescrizioneSingola(&session, 7, 1, host::kindDrugs));
     }},
    {"ChiudiSessionePrescrizione",
     [](auto& provider)
     {
         EmptyForms::Session session(true);
         CHECK_FALSE(provider.ChiudiSessionePrescrizione(&session));
     }},
    {"VerificaPrescrizione", [](auto& provider) { CHECK(provider.VerificaPrescrizione(7, host::kindDrugs)); }},
    {"VerificaPrescrizioneSingola",
     [](auto& provider) { CHECK(provider.VerificaPrescrizioneSingola(7, 1, host::kindDrugs)); }},
    {"AnnullaPrescrizione", [](auto& provider) { CHECK_FALSE(provider.AnnullaPrescrizione(7, 1, host::kindDrugs)); }},
    {"InviaCertificato",
     [](auto& provider)
     {
         StoredRow row;
         MemoryRecord certificate(row);
         CHECK_FALSE(provider.InviaCertificato(&certificate));
     }},
    {"AnnullaCertificato",
     [](auto& provider)
     {
         StoredRow row;
         MemoryRecord certificate(row);
         CHECK_FALSE(provider.AnnullaCertificato(&certificate));
     }},
    {"InserisciContatto", [](auto& provider) { CHECK_FALSE(provider.InserisciContatto(7)); }},
    {"IsPersonaleStudio", [](auto& provider) { CHECK(provider.IsPersonaleStudio()); }},
};

} // namespace

TEST_SUITE("provider")
{
    TEST_CASE("what the host replaces during a call lives to its end, in every operation")
    {
        Installation installation;
        installation.Write("host\\elenco.xml",
                           "<assistiti><assistito><codiceFiscale>CF</codiceFiscale></assistito></assistiti>");
        installation.WriteTable("master", "ID_CENTRALE|DS_NOME_FILE|DT_AGGIORNAMENTO\r\nESENZIONI|es|2011-03-07\r\n");
        for (const auto& operation : operations)
        {
            CAPTURE(operation.name);
            auto settings = std::make_unique<MemorySettings>();
            settings->values = installation.settings.values;
            provider::SISSProvider provider(
                {.bridge = std::make_unique<FakeBridge>(),
                 .objects = std::make_unique<PracticeObjects>(),
                 .prescriptions = std::make_unique<EmptyForms>(),
                 .settings = std::move(settings),
                 .clock = std::make_unique<FixedClock>(),
                 .desktop = std::make_unique<OneFileDesktop>(installation.Path("host\\elenco.xml"))});
            RestlessHost host(provider);
            operation.call(provider);
            CHECK(host.HandedOver() > 3);
            CHECK(host.AllLived());
            CHECK(host.Living() == 3); // the ones in their place now
        }
    }
}
