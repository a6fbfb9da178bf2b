#include "host/database_contract.h"
#include "tests/diagnosi/installation/whole_installation.h"

#include <doctest.h>

#include <fstream>
#include <iterator>

using namespace vellumo;

TEST_CASE("a whole installation shows no warning")
{
    tests::WholeInstallation installation;
    installation.MakeDatabase();
    CHECK(tests::Complaints(installation.Diagnose()).empty());
}

TEST_CASE("the document has every column that the library needs, and no other")
{
    std::string rows;
    for (const auto& need : host::DatabaseContract())
    {
        rows.append("| `").append(need.table).append("` | `").append(need.column).append("` | ");
        rows.append(host::NameOf(need.kind))
            .append(" | ")
            .append(need.use)
            .append(" | ")
            .append(need.by)
            .append(" |\n");
    }
    std::ifstream in(VELLUMO_DOCUMENTS "/host-contract.md", std::ios::binary);
    const std::string document{std::istreambuf_iterator<char>(in), {}};
    const auto begin = document.find("\n| `Paziente` | `IDPaziente` |") + 1;
    CHECK(document.substr(begin, document.find("\n\n", begin) + 1 - begin) == rows);
}
