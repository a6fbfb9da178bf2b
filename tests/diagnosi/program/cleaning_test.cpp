// Old folders of the exchange log: which ones go, and that nothing else does.
#include "diagnosi/program/command.h"
#include "host/path.h"
#include "tests/support/installation.h"

#include <doctest.h>

#include <filesystem>
#include <sstream>

using namespace vellumo;
using diagnosi::ExitCode;

namespace
{

// The day of its clock is 5 March 2024.
class LoggedInstallation : public tests::Installation
{
public:
    LoggedInstallation()
    {
        for (const auto* name : {"2024-03-05 09.00.00\\1 - Richiesta", "2024-02-04 23.59.59\\1 - Richiesta",
                                 "2024-02-03 00.00.00\\1 - Richiesta", "2019-12-31 08.30.00\\1 - Richiesta",
                                 "2019-12-31 08.30.00 copia\\1 - Richiesta", "2019-13-31 08.30.00\\x",
                                 "2019-1-01 08.30.000\\x", "appunti\\x", "2018-01-01 10.00.00"})
        {
            Write(std::string("host\\SISS\\Log\\") + name, "");
        }
    }

    ExitCode Clean(const std::vector<std::string>& options)
    {
        std::vector<std::string> words{"pulizia"};
        words.insert(words.end(), options.begin(), options.end());
        diagnosi::Machine machine{settings, clock};
        std::ostringstream out;
        const auto code = diagnosi::Run(words, machine, out);
        text = out.str();
        return code;
    }
    [[nodiscard]] std::size_t Left() const
    {
        const std::filesystem::directory_iterator entries(host::NativePath(Path("host\\SISS\\Log")));
        return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
    }

    std::string text;
};

} // namespace

TEST_CASE("folders beyond the days are listed, and removed only when told so")
{
    LoggedInstallation installation;
    CHECK(installation.Clean({"--giorni", "30"}) == ExitCode::Attention);
    CHECK(
        installation.text.find("2 cartelle più vecchie di 30 giorni\n  2019-12-31 08.30.00\n  2024-02-03 00.00.00\n") !=
        std::string::npos);
    CHECK(installation.Left() == 9);

    CHECK(installation.Clean({"--giorni", "30", "--elimina"}) == ExitCode::Done);
    CHECK(installation.Left() == 7);
    CHECK(installation.Clean({"--giorni", "30"}) == ExitCode::Done);
}

TEST_CASE("what is no log stays, and is told")
{
    LoggedInstallation installation;
    installation.Write("host\\SISS\\Log\\2019-12-31 08.30.00\\appunti\\lettera.txt", "non del registro");
    CHECK(installation.Clean({"--giorni", "1000", "--elimina"}) == ExitCode::Wrong);
    CHECK(installation.text.find("Non è stato possibile eliminare del tutto") != std::string::npos);
    CHECK(std::filesystem::exists(
        host::NativePath(installation.Path("host\\SISS\\Log\\2019-12-31 08.30.00\\appunti\\lettera.txt"))));
}

TEST_CASE("without a number of days nothing is done")
{
    LoggedInstallation installation;
    for (const auto& options : std::vector<std::vector<std::string>>{{},
                                                                     {"--elimina"},
                                                                     {"--giorni", "0", "--elimina"},
                                                                     {"--giorni", "-1", "--elimina"},
                                                                     {"--giorni", "3x", "--elimina"}})
    {
        CHECK(installation.Clean(options) == ExitCode::NotDone);
    }
    CHECK(installation.Left() == 9);
}
