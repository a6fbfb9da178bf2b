// What a package from outside may put where.
#include "diagnosi/exchanges/exchange_record.h"
#include "diagnosi/replay/package_log.h"
#include "diagnosi/support/zip_archive.h"
#include "environment/files.h"
#include "host/fault.h"

#include <doctest.h>

#include <string>

using namespace vellumo;
using diagnosi::PackageLog;

namespace
{

const std::string folder = "Log/2026-11-22 09.14.07/";

std::string ZipWith(const std::string& name)
{
    diagnosi::ZipArchive zip;
    zip.Add(folder + "1 - Richiesta Identifica Cittadino GUI", "<a/>", {});
    zip.Add(name, "outside", {});
    return zip.Finish();
}

} // namespace

TEST_CASE("a package's log is read, and nothing is written beside it")
{
    for (const auto* const name : {"Log/../1 - Richiesta A", "../../fuori", "/fuori", "Tracce/tracce 2026-11.txt",
                                   "Log/", "Log/2026-11-22 09.14.07/../fuori", "Log/2026-11-22 09.14.07/..\\fuori",
                                   "Log/2026-11-22 09.14.07/..", "Log/2026-11-22 09.14.07/C:fuori"})
    {
        std::string left;
        {
            const PackageLog log(ZipWith(name));
            left = log.Folder();
            const auto record = diagnosi::ReadExchanges(left);
            REQUIRE(record.operations.size() == 1);
            CHECK(record.operations.front().calls.size() == 1);
            CHECK(record.skipped.empty());
        }
        CHECK_FALSE(environment::FolderExists(left));
        CHECK_FALSE(environment::FileExists(environment::JoinPath(left, "..\\fuori")));
    }
}

TEST_CASE("a package that is damaged anywhere is refused or read, and never more than that")
{
    const auto whole = ZipWith(folder + "1 - Risposta Identifica Cittadino GUI");
    for (std::size_t at = 0; at < whole.size(); ++at)
    {
        for (const char wrong : {'\0', '\x7F', '\xFF'})
        {
            auto damaged = whole;
            damaged[at] = wrong;
            try
            {
                static_cast<void>(PackageLog(damaged));
            }
            catch (const host::Fault& fault)
            {
                CHECK_FALSE(fault.Description().empty());
            }
        }
        CHECK_THROWS_AS(PackageLog(std::string_view(whole).substr(0, at)), host::Fault);
    }
}
