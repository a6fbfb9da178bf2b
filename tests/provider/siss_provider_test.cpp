#include "provider/siss_provider.h"
#include "tests/support/fake_host.h"
#include "tests/support/installation.h"

#include <doctest.h>

#include <memory>
#include <string>

using namespace vellumo;
using namespace vellumo::tests;

namespace
{

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

class PatientObjects final : public host::HostObjects
{
public:
    std::unique_ptr<host::Record> CreateRecord(host::RecordKind, const host::HostServices&) override
    {
        return std::make_unique<MemoryRecord>(row);
    }
    std::unique_ptr<host::PracticeSettings> CreateSettings(const host::HostServices&) override { return nullptr; }

    StoredRow row;
};

} // namespace

TEST_SUITE("provider")
{
    // A host whose connection broke may put a new one in its place from inside its own helpers.
    TEST_CASE("what the host replaces during a call lives to its end")
    {
        Installation installation;
        installation.Write("host\\elenco.xml",
                           "<assistiti><assistito><codiceFiscale>CF</codiceFiscale></assistito></assistiti>");
        provider::SISSProvider provider({std::make_unique<FakeBridge>(), std::make_unique<PatientObjects>(), nullptr,
                                         std::make_unique<MemorySettings>(), std::make_unique<FixedClock>(),
                                         std::make_unique<OneFileDesktop>(installation.Path("host\\elenco.xml"))});
        auto& services = provider.Services();
        const auto utils = std::make_shared<FakeUtils>();
        services.utils = utils;
        services.connection = std::make_shared<FakeConnection>();
        std::weak_ptr<host::Connection> first = services.connection;
        bool lived = false;
        utils->valueOf = [&](const std::string&, const host::Parameters&)
        {
            services.connection = std::make_shared<FakeConnection>();
            lived = !first.expired();
            return host::Value();
        };
        CHECK(provider.SincronizzaPazienti());
        CHECK(lived);
        CHECK(first.expired());
    }
}
