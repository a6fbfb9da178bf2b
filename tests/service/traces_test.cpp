#include "environment/files.h"
#include "host/fault.h"
#include "host/path.h"
#include "service/journal.h"
#include "service/trace_folder.h"
#include "tests/support/practice.h"

#include <doctest.h>

#include <filesystem>
#include <fstream>

using namespace vellumo::service;
using vellumo::host::Fault;
using vellumo::host::LeftCode;
using vellumo::tests::Practice;

namespace
{

const std::string tracesFolder = "host\\SISS\\Tracce";

std::vector<std::filesystem::path> CodeFiles(const Practice& practice)
{
    std::vector<std::filesystem::path> files;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(
             vellumo::host::NativePath(practice.installation.Path(tracesFolder)), error))
    {
        if (entry.path().filename().string().starts_with("codici"))
        {
            files.push_back(entry.path());
        }
    }
    return files;
}

std::vector<std::string> Recovered(Practice& practice, std::int32_t studio, bool taken = true)
{
    std::vector<std::string> codes;
    TraceFolder(practice.installation.settings, practice.installation.clock)
        .Recover(studio,
                 [&](const LeftCode& code)
                 {
                     codes.push_back(code.subject + " " + code.code + " " + std::to_string(code.user) + " " +
                                     code.time);
                     return taken;
                 });
    return codes;
}

} // namespace

TEST_SUITE("service")
{
    TEST_CASE("an open code is its provider's until that ends, and then anybody's of the same practice, once")
    {
        Practice practice;
        auto left = std::make_unique<TraceFolder>(practice.installation.settings, practice.installation.clock);
        const auto first = left->Keep({1, 7, "Ricetta farmaci 101, numero 1", "IUP A"});
        auto second = left->Keep({1, 7, "Ricetta farmaci 101, numero 2", "IUP B"});
        auto other = left->Keep({2, 8, "Certificato del paziente 5", "protocollo INPS C"});
        REQUIRE((first && second && other));
        CHECK(Recovered(practice, 1).empty()); // its owner lives

        first->Settle();
        left = nullptr;
        CHECK(Recovered(practice, 1).empty()); // the session still has the other responses
        second = nullptr;
        other = nullptr;
        first->Settle(); // once more does nothing

        const std::vector<std::string> lost = {"Ricetta farmaci 101, numero 2 IUP B 7 2024-03-05 15.04.09"};
        CHECK(Recovered(practice, 1, false).empty() == false); // the journal refused
        CHECK(Recovered(practice, 1) == lost);
        CHECK(Recovered(practice, 1).empty());
        CHECK(CodeFiles(practice).size() == 1);
        CHECK(Recovered(practice, 2).size() == 1);
        CHECK(CodeFiles(practice).empty());
    }

    TEST_CASE("a file of codes goes when none is open, and one that cannot be written is told")
    {
        Practice practice;
        {
            TraceFolder traces(practice.installation.settings, practice.installation.clock);
            TraceFolder another(practice.installation.settings, practice.installation.clock);
            const auto code = traces.Keep({1, 7, "Ricetta farmaci 101, numero 1", "IUP A"});
            const auto theirs = another.Keep({1, 7, "Ricetta farmaci 101, numero 1", "IUP A"});
            CHECK(CodeFiles(practice).size() == 2);
            code->Settle();
            theirs->Settle();
        }
        CHECK(CodeFiles(practice).empty());

        std::filesystem::remove_all(vellumo::host::NativePath(practice.installation.Path("host\\SISS")));
        TraceFolder nowhere(practice.installation.settings, practice.installation.clock);
        CHECK_FALSE(nowhere.Keep({1, 7, "Ricetta farmaci 101, numero 1", "IUP A"}));
        CHECK_FALSE(nowhere.Append("riga"));
        CHECK(Recovered(practice, 1).empty());
    }

    TEST_CASE("a line stands in the host's journal and in the month's file, cut and on one line")
    {
        Practice practice;
        CHECK(practice.journal.WriteToCheck("prima\r\nriga"));
        CHECK(practice.journal.Write(std::string(5000, 'x')));
        const auto text =
            vellumo::environment::ReadFile(practice.installation.Path(tracesFolder + "\\tracce 2024-03.txt"));
        REQUIRE(text);
        CHECK(text->starts_with("2024-03-05 15.04.09 Vellumo "));
        CHECK(text->find("DA CONTROLLARE: prima riga\r\n") != std::string::npos);
        CHECK(text->size() < 2300);
        REQUIRE(practice.utils->written.size() == 2);
        CHECK(practice.utils->written[0] == "DA CONTROLLARE: prima riga");
        CHECK(practice.utils->written[1] == std::string(1999, 'x') + "…");
        CHECK(practice.journal.Write(std::string(2000, 'x')));
        CHECK(practice.utils->written.back() == std::string(2000, 'x'));
    }

    TEST_CASE("where the month's file is another user's, a line goes into one beside it")
    {
        Practice practice;
        // A folder of that name refuses like a file without rights, which administrators never meet.
        std::filesystem::create_directories(
            vellumo::host::NativePath(practice.installation.Path(tracesFolder + "\\tracce 2024-03.txt")));
        CHECK(practice.journal.Write("riga"));
        const auto text =
            vellumo::environment::ReadFile(practice.installation.Path(tracesFolder + "\\tracce 2024-03 2.txt"));
        REQUIRE(text);
        CHECK(text->ends_with("riga\r\n"));
    }

    TEST_CASE("what cannot be written in one place stands in the other, and the folder is told once")
    {
        Practice practice;
        practice.services.utils = nullptr;
        CHECK_FALSE(practice.journal.Write("solo nella cartella"));
        CHECK(vellumo::environment::ReadFile(practice.installation.Path(tracesFolder + "\\tracce 2024-03.txt")));

        std::filesystem::remove_all(vellumo::host::NativePath(practice.installation.Path("host\\SISS")));
        practice.services.utils = practice.utils;
        CHECK(practice.journal.Write("uno"));
        CHECK(practice.journal.Write("due"));
        REQUIRE(practice.utils->written.size() == 3);
        CHECK(practice.utils->written[1].starts_with("DA CONTROLLARE: la cartella SISS\\Tracce"));
    }

    TEST_CASE("what a server quotes stays out of a line")
    {
        CHECK(WhyOf(Fault("Cannot insert 'O'Brien' (1960).", -2147217873, "Microsoft OLE DB")) ==
              "errore 0x80040E2F di Microsoft OLE DB: Cannot insert '…' (…).");
        struct Case
        {
            std::string text;
            std::string masked;
        };
        const std::vector<Case> cases = {
            {"l'errore dell'archivio", "l'errore dell'archivio"},
            {"valore \"Rossi\" e [Bianchi]", "valore \"…\" e […]"},
            {"valore\"Rossi\" e[Bianchi]", "valore\"…\" e[…]"},
            {"«Rossi» e “Bianchi”", "«…» e “…”"},
            {"chiave (Rossi", "chiave (…"},
            {"chiave 'Rossi", "chiave '…"},
            {"(uno (due) Rossi)", "(…)"},
        };
        for (const Case& each : cases)
        {
            CAPTURE(each.text);
            CHECK(WithoutQuotedValues(each.text) == each.masked);
        }
    }
}
