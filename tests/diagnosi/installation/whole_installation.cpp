#include "tests/diagnosi/installation/whole_installation.h"

#include "environment/files.h"
#include "host/path.h"
#include "host/text.h"
#include "simulator/norda/database.h"
#include "simulator/norda/odbc.h"
#include "simulator/norda/platform.h"
#include "simulator/norda/seed.h"
#include "simulator/norda/sql_dialect.h"

#include <doctest.h>

#include <algorithm>
#include <filesystem>

namespace vellumo::tests
{
namespace
{

bool Has(const std::string& text, const char* part)
{
    return text.find(part) != std::string::npos;
}

} // namespace

WholeInstallation::WholeInstallation()
{
    WriteTemplates();
    Write("client\\SISS\\Conf\\WINBRIDGE4SEBACTIVEX.conf", norda::seed::bridgeConf);
    WriteTable("master", "ID_CENTRALE|DS_NOME_FILE|DT_AGGIORNAMENTO\r\nESENZIONI|esenzioni|2024-01-15\r\n"
                         "BRANCHE_SPECIALISTICHE|branche|2023-11-04\r\nMAPPING_REGIONALE|mapping|2024-02-03\r\n");
    WriteTable("esenzioni", "CD_APPLICATIVO|DS_ESENZIONE_SISS|DT_INIZIO_VALIDITA|DT_FINE_VALIDITA\r\n"
                            "E01|Reddito|2001-01-01|\\N\r\n");
    WriteTable("branche", "CD_BRANCA_SPECIALISTICA|DS_BRANCA_SPECIALISTICA\r\n01|Cardiologia\r\n");
    WriteTable("mapping", "CD_APPLICATIVO|DS_PRESTAZIONE_SISS\r\n89.7|Visita\r\n");
}

void WholeInstallation::MakeDatabase(const std::vector<Change>& changes)
{
    namespace odbc = norda::odbc;
    const std::string file = norda::DriverPath(host::NativePath(Path("studio.db")));
    databases.practice = "Driver=SQLite3;Database=" + file + ";SyncPragma=OFF";
    databases.shared = databases.practice;

    const odbc::Environment environment(SQL_NULL_HANDLE);
    SQLSetEnvAttr(environment.Get(), SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    const odbc::Connection connection(environment.Get());
    auto text = odbc::Wide(databases.practice);
    odbc::Check(
        SQLDriverConnectW(connection.Get(), nullptr, text.data(), SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT),
        SQL_HANDLE_DBC, connection.Get());
    for (const auto script : {norda::seed::schema, norda::seed::views})
    {
        for (auto statement : norda::Database::Statements(script))
        {
            for (const auto& [from, to] : changes)
            {
                statement = host::Replaced(statement, from, to);
            }
            statement = host::Replaced(norda::ForSqlite(statement), "CREATE TEMP VIEW", "CREATE VIEW");
            statement = host::Replaced(statement, "Norda.", "");
            const odbc::Statement executed(connection.Get());
            odbc::Execute(executed, statement, odbc::Interface::Narrow);
        }
    }
    SQLDisconnect(connection.Get());
}

void WholeInstallation::Remove(const std::string& name) const
{
    REQUIRE(std::filesystem::remove_all(host::NativePath(Path(name))) > 0);
}

void WholeInstallation::Replace(const std::string& name, const std::string& from, const std::string& to) const
{
    const auto text = environment::ReadFile(Path(name)).value();
    REQUIRE(text.find(from) != std::string::npos);
    Write(name, host::Replaced(text, from, to));
}

std::vector<diagnosi::Checked> WholeInstallation::Diagnose()
{
    return diagnosi::RunChecks({settings, clock, databases});
}

std::string Complaints(const std::vector<diagnosi::Checked>& checked)
{
    std::vector<diagnosi::Checked> bad;
    for (const auto& one : checked)
    {
        if (one.finding.state != diagnosi::State::Ok)
        {
            bad.push_back(one);
        }
    }
    return diagnosi::ReportOf(bad);
}

void Verify(const Broken& row, WholeInstallation& installation)
{
    INFO(std::string(row.what));
    row.breakIt(installation);
    const auto checked = installation.Diagnose();
    INFO(Complaints(checked));
    const auto named = std::ranges::find_if(checked, [&](const diagnosi::Checked& one)
                                            { return std::string_view(one.check->name).starts_with(row.check); });
    REQUIRE(named != checked.end());
    CHECK(named->finding.state == row.state);
    CHECK(Has(named->finding.found, row.found));
    CHECK(Has(named->finding.remedy, row.remedy));
}

} // namespace vellumo::tests
