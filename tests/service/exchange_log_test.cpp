#include "environment/files.h"
#include "host/fault.h"
#include "service/exchange_log.h"
#include "tests/support/fake_host.h"
#include "tests/support/installation.h"

#include <doctest.h>

#include <memory>

using namespace vellumo;
using tests::Installation;

namespace
{

// A practice that wants the log.
class LoggingPractice final : public host::HostObjects
{
public:
    std::unique_ptr<host::Record> CreateRecord(host::RecordKind, const host::HostServices&) override { return nullptr; }
    std::unique_ptr<host::PracticeSettings> CreateSettings(const host::HostServices&) override
    {
        return std::make_unique<EverythingOn>();
    }

private:
    class EverythingOn final : public host::PracticeSettings
    {
    public:
        bool Load(std::int32_t) override { return true; }
        [[nodiscard]] host::Value Get(std::string_view) const override { return true; }
    };
};

} // namespace

TEST_SUITE("service")
{
    TEST_CASE("an operation whose folder cannot be made does not write into the folder of the one before it")
    {
        Installation installation;
        installation.Write("host\\SISS\\Templates\\da avere la cartella", "");
        host::HostServices services;
        services.utils = std::make_shared<tests::FakeUtils>();
        LoggingPractice practice;
        service::ExchangeLog log(services, practice, installation.settings, installation.clock);
        const service::ServiceRequest request("Prova", "/a", "/a", {});
        const auto isThere = [&](const std::string& file)
        { return environment::FileExists(installation.Path("host\\SISS\\Log\\2024-03-05 15.04.09\\" + file)); };

        log.Prepare();
        log.Write(request, nullptr);
        CHECK(isThere("1 - Richiesta Prova"));
        CHECK(isThere("1 - Risposta Prova"));

        installation.clock.now = host::Date::FromCalendar(2024, 3, 5, 15, 4, 10).value();
        installation.Write("host\\SISS\\Log\\2024-03-05 15.04.10", "Una cartella non si può fare qui.");
        log.Prepare();
        log.Write(request, nullptr);
        CHECK_FALSE(isThere("2 - Richiesta Prova"));
        CHECK_FALSE(isThere("2 - Risposta Prova"));
    }
}
