#include "provider/siss_provider.h"
#include "tests/support/fake_desktop.h"
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

    provider::SISSProvider& m_provider;
    std::vector<std::weak_ptr<void>> m_handedOver;
    bool m_allLived = true;
};

void RestlessHost::HandOver()
{
    const auto connection = std::make_shared<FakeConnection>();
    const auto lockSrv = std::make_shared<FakeLockSrv>();
    const auto utils = std::make_shared<FakeUtils>();
    connection->called = lockSrv->called = utils->called = [this] { Called(); };
    m_handedOver.insert(m_handedOver.end(), {connection, lockSrv, utils});
    m_provider.SetConnection(connection);
    m_provider.SetLockSrv(lockSrv);
    m_provider.SetUtils(utils);
}

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
         FakeSession session;
         CHECK(provider.RegistraPrescrizione(&session, 7, host::kindDrugs));
     }},
    {"RegistraPrescrizioneSingola",
     [](auto& provider)
     {
         FakeSession session;
         CHECK(provider.RegistraPrescrizioneSingola(&session, 7, 1, host::kindDrugs));
     }},
    {"ChiudiSessionePrescrizione",
     [](auto& provider)
     {
         FakeSession session;
         session.waits = true;
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
            auto desktop = std::make_unique<FakeDesktop>();
            desktop->file = installation.Path("host\\elenco.xml");
            auto objects = std::make_unique<FakeObjects>();
            objects->settings = {{"CCEAbilitaLog", true}};
            provider::SISSProvider provider({.bridge = std::make_unique<FakeBridge>(),
                                             .objects = std::move(objects),
                                             .prescriptions = std::make_unique<FakePrescriptions>(),
                                             .settings = std::move(settings),
                                             .clock = std::make_unique<FixedClock>(),
                                             .desktop = std::move(desktop)});
            RestlessHost host(provider);
            operation.call(provider);
            CHECK(host.HandedOver() > 3);
            CHECK(host.AllLived());
            CHECK(host.Living() == 3); // the ones in their place now
        }
    }
}
