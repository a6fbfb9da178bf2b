#include "environment/files.h"
#include "tests/support/practice.h"

#include <doctest.h>

using namespace vellumo;

TEST_SUITE("service")
{
    TEST_CASE("an operation whose folder cannot be made does not write into the folder of the one before it")
    {
        tests::Practice practice;
        practice.objects.settings = {{"CCEAbilitato", true}, {"CCEAbilitaLog", true}};
        const service::ServiceRequest request("Prova", "/a", "/a", {});
        const auto isThere = [&](const std::string& file) {
            return environment::FileExists(practice.installation.Path("host\\SISS\\Log\\2024-03-05 15.04.09\\" + file));
        };

        practice.log.Prepare();
        practice.log.Write(request, "");
        CHECK(isThere("1 - Richiesta Prova"));
        CHECK(isThere("1 - Risposta Prova"));

        practice.installation.clock.now = host::Date::FromCalendar(2024, 3, 5, 15, 4, 10).value();
        practice.installation.Write("host\\SISS\\Log\\2024-03-05 15.04.10", "Qui non si può fare una cartella.");
        practice.log.Prepare();
        practice.log.Write(request, "");
        CHECK_FALSE(isThere("2 - Richiesta Prova"));
        CHECK_FALSE(isThere("2 - Risposta Prova"));
    }
}
