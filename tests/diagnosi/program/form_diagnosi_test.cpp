// The support program's window: what it shows of the checks, and that nothing is changed without a question.
#include "diagnosi/program/form_diagnosi.h"
#include "host/path.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/installation.h"

#include <doctest.h>

#include <algorithm>
#include <filesystem>

using namespace vellumo;

namespace
{

struct OpenDiagnosis
{
    OpenDiagnosis()
    {
        installation.WriteTemplates();
        installation.Write("host\\SISS\\Log\\2019-12-31 08.30.00\\1 - Richiesta Invia Certificato", "<a/>");
        form.Activated();
    }

    [[nodiscard]] bool HasOldLog() const
    {
        return std::filesystem::exists(host::NativePath(installation.Path("host\\SISS\\Log\\2019-12-31 08.30.00")));
    }

    tests::Installation installation;
    diagnosi::Machine machine{installation.settings, installation.clock};
    tests::FakeDesktop desktop;
    std::vector<std::string> opened;
    diagnosi::FormDiagnosi form{machine, desktop, [this](const std::string& path) { opened.push_back(path); }};
};

} // namespace

TEST_CASE("the window opens on the first check that is not ok, with what to do")
{
    OpenDiagnosis diagnosis;
    auto& checks = tests::Find<ui::Grid>(diagnosis.form, "Con&trolli");
    const auto& remedy = tests::Find<ui::TextBox>(diagnosis.form, "Che cosa &fare");
    REQUIRE(checks.rows.size() == diagnosi::Checks().size());
    const auto first = std::ranges::find_if(checks.rows, [](const ui::Row& row) { return row[0].text != "ok"; });
    CHECK(checks.selected == static_cast<std::size_t>(first - checks.rows.begin()));
    CHECK_FALSE(remedy.value.empty());
    CHECK(diagnosis.form.Controls().front()->text.starts_with("Errori: "));

    checks.selected = static_cast<std::size_t>(
        std::ranges::find_if(checks.rows, [](const ui::Row& row) { return row[0].text == "ok"; }) -
        checks.rows.begin());
    diagnosis.form.Changed(checks);
    CHECK(remedy.value == "Nulla.");
}

TEST_CASE("old logs are removed only after the question, which names them")
{
    OpenDiagnosis diagnosis;
    auto& cleaning = tests::Find<ui::Button>(diagnosis.form, "P&ulizia");
    diagnosis.desktop.answers = {ui::Answer::No};
    diagnosis.form.Clicked(cleaning);
    CHECK(diagnosis.desktop.Told().find("2019-12-31 08.30.00") != std::string::npos);
    CHECK(diagnosis.desktop.prompts.back().defaultButton == 2);
    CHECK(diagnosis.HasOldLog());

    diagnosis.desktop.answers = {ui::Answer::Yes};
    diagnosis.form.Clicked(cleaning);
    CHECK(diagnosis.desktop.Told().find("Eliminate: 1") != std::string::npos);
    CHECK_FALSE(diagnosis.HasOldLog());

    tests::Find<ui::TextBox>(diagnosis.form, "&Giorni").value = "mai";
    diagnosis.form.Clicked(cleaning);
    CHECK(diagnosis.desktop.Told().find("numero intero") != std::string::npos);
}

TEST_CASE("the page of exchanges is opened when there is one")
{
    OpenDiagnosis diagnosis;
    diagnosis.form.Clicked(tests::Find<ui::Button>(diagnosis.form, "Registro"));
    REQUIRE(diagnosis.opened.size() == 1);
    CHECK(std::filesystem::remove(host::NativePath(diagnosis.opened.front())));

    diagnosis.opened.clear();
    diagnosis.installation.settings.values.clear();
    diagnosis.form.Clicked(tests::Find<ui::Button>(diagnosis.form, "Registro"));
    CHECK(diagnosis.opened.empty());
    CHECK(diagnosis.desktop.Told().find("La cartella del registro non c'è") != std::string::npos);
}

TEST_CASE("the package is shown first, and written only after the question")
{
    OpenDiagnosis diagnosis;
    auto& package = tests::Find<ui::Button>(diagnosis.form, "&Pacchetto");
    diagnosis.desktop.answers = {ui::Answer::No};
    diagnosis.form.Clicked(package);
    REQUIRE(diagnosis.opened.size() == 1);
    CHECK(std::filesystem::remove(host::NativePath(diagnosis.opened.front())));
    CHECK(diagnosis.desktop.prompts.size() == 1);

    diagnosis.desktop.answers = {ui::Answer::Yes};
    diagnosis.form.Clicked(package);
    REQUIRE(diagnosis.opened.size() == 2);
    CHECK(std::filesystem::remove(host::NativePath(diagnosis.opened.back())));
    const auto& told = diagnosis.desktop.prompts.back().text;
    CHECK(std::filesystem::remove(host::NativePath(told.substr(told.find('\n') + 1))));
}
