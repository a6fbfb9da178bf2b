// Pairing SISS exemptions with local ones: searching, assigning row after row, confirming.
#include "ui/form_esenzioni.h"

#include "tests/support/fake_desktop.h"
#include "tests/support/local_exemptions.h"

#include <doctest.h>

using namespace vellumo;
using namespace vellumo::tests;
using namespace vellumo::ui;

namespace
{

struct Window
{
    FakeConnection database = LocalExemptions();
    FakeDesktop desktop;
    std::vector<SissExemption> esenzioni = {{"E01", "Reddito", {}, {}, 11},
                                            {"C01", "Invalidi", {}, {}, 0},
                                            {"Z9", "Altra", {}, {}, 99},
                                            {"0131", "Diab.", {}, {}, 0}};
    FormEsenzioni form{{}, esenzioni, database, desktop};
    FakeView view{form};
    Grid& siss = Find<Grid>(form, "&Esenzioni SISS");
    Grid& local = Find<Grid>(form, "Esenzioni &locali");
    TextBox& search = Find<TextBox>(form, "Ce&rca");
    Button& assign = Find<Button>(form, "&Assegna");
    Button& confirm = Find<Button>(form, "&Conferma");

    void Type(const std::string& text)
    {
        search.value = text;
        form.Changed(search);
    }
    std::string Found() const
    {
        std::string codes;
        for (const Row& row : local.rows)
        {
            codes += row[0].text + ' ';
        }
        return codes;
    }
    std::string Selected() const { return local.selected ? local.rows.at(*local.selected)[0].text : ""; }
    const Cell& Assigned(std::size_t row) const { return siss.rows.at(row).at(2); }
};

} // namespace

TEST_SUITE("exemptions window")
{
    TEST_CASE("it starts on the first row without a local exemption, ready for typing")
    {
        const Window window;
        CHECK(window.Assigned(0).text == "E01 - Reddito: età > 65");
        CHECK_FALSE(window.Assigned(0).background);
        CHECK(window.Assigned(1).text == "Assegna esenzione");
        CHECK(window.Assigned(1).foreground == 0x0000FF);
        CHECK(window.Assigned(1).background == 0xFFEFF6);
        // Paired with one that the local list does not have.
        CHECK(window.Assigned(2).text == "Non esiste più (esenzione locale 99): riassegnare");
        CHECK(window.Assigned(2).background == 0xFFEFF6);
        CHECK(window.form.Controls()[1]->text == "Restano 2 esenzioni da assegnare. 1 è assegnata a un'esenzione "
                                                 "locale che non esiste più: non verrà salvata.");
        CHECK(window.siss.selected == 1);
        CHECK(window.form.InitialFocus() == &window.search);
        CHECK(window.local.rows.size() == 6);
        CHECK(window.Selected() == "C01"); // proposed, since it has the same code
        CHECK(window.assign.isDefault);
        CHECK(window.form.Result() == FormEsenzioni::Decision::Cancelled);
    }

    TEST_CASE("typing finds without case, accents and apostrophes, every word anywhere")
    {
        Window window;
        const std::vector<std::pair<std::string, std::string>> searches = {{"invalidita", "C01 S01 "},
                                                                           {"INVALIDITÀ", "C01 S01 "},
                                                                           {"invalidita' serv", "S01 "},
                                                                           {"65 età", "E01 "},
                                                                           {"e01", "E01 "},
                                                                           {"  ", "013 013.250 C01 E01 M13 S01 "},
                                                                           {"c01inv", ""},
                                                                           {"nulla", ""}};
        for (const auto& search : searches)
        {
            CAPTURE(search.first);
            window.Type(search.first);
            CHECK(window.Found() == search.second);
        }
    }

    TEST_CASE("the likeliest match is selected: the code itself, then its beginning, then the first")
    {
        Window window;
        window.Type("m13");
        CHECK(window.Selected() == "M13");
        window.Type("13"); // no code begins so
        CHECK(window.Selected() == "013");
        window.Type("013.");
        CHECK(window.Selected() == "013.250");
        window.Type("c01");
        CHECK(window.Selected() == "C01");
        window.Type("s");
        CHECK(window.Found() == "M13 S01 ");
        CHECK(window.Selected() == "S01");
        CHECK(window.assign.enabled);
        window.Type("");
        CHECK(window.Selected() == "C01");
    }

    TEST_CASE("of several local exemptions with the code as typed the first is selected, whatever stands before them")
    {
        FakeConnection database =
            LocalExemptions({{21, "Esatta", "d01", 1}, {22, "Doppia", "d01", 1}, {20, "Comincia", "D01.5", 1}});
        FakeDesktop desktop;
        std::vector<SissExemption> esenzioni = {{"D01", "Da assegnare", {}, {}, 0}};
        FormEsenzioni form({}, esenzioni, database, desktop);
        auto& search = Find<TextBox>(form, "Ce&rca");
        search.value = "D01";
        form.Changed(search);
        CHECK(Find<Grid>(form, "Esenzioni &locali").selected == 1); // below the one that only begins so
        form.Clicked(Find<Button>(form, "&Assegna"));
        form.Clicked(Find<Button>(form, "&Conferma"));
        CHECK(esenzioni[0].IDEsenzione == 21);
    }

    TEST_CASE("assigning goes on to the next row, and only the last confirmation changes the exemptions")
    {
        Window window;
        window.Type("c01");
        window.form.Clicked(window.assign);
        CHECK(window.Assigned(1).text == "C01 - Invalidità civile 100%");
        CHECK_FALSE(window.Assigned(1).background);
        CHECK(window.siss.selected == 3);
        CHECK(Find<TextBox>(window.form, "&Dettagli").value == "SISS: 0131 - Diab.\r\nLocale: da assegnare");
        CHECK(window.search.value.empty());
        CHECK(window.view.focus == &window.search);
        CHECK_FALSE(window.assign.enabled); // no local one has its code
        CHECK(window.confirm.isDefault);
        window.form.Clicked(window.assign); // a second Enter by mistake
        CHECK(window.Assigned(3).text == "Assegna esenzione");

        window.form.Clicked(window.confirm);
        REQUIRE(window.desktop.prompts.size() == 1);
        const Prompt& prompt = window.desktop.prompts[0];
        CHECK(prompt.title == "Attenzione!!");
        CHECK(prompt.text == "Prima di proseguire è necessario assegnare le esenzioni mancanti.");
        CHECK(prompt.icon == Icon::Exclamation);
        CHECK(prompt.buttons == Buttons::Ok);
        CHECK_FALSE(window.form.IsClosed());

        window.Type("diabete");
        window.local.selected = 1;
        window.form.Changed(window.local);
        window.form.Clicked(window.local); // double click
        CHECK(window.Assigned(3).text == "013.250 - Diabete mellito");
        window.siss.selected = 0; // a row that has one already gets another
        window.form.Changed(window.siss);
        window.Type("m13");
        window.form.Clicked(window.assign);
        CHECK(window.Assigned(0).text == "M13 - Gravidanza, visita 13");
        CHECK(window.esenzioni[1].IDEsenzione == 0);

        window.form.Clicked(window.confirm);
        CHECK(window.form.IsClosed());
        CHECK(window.form.Result() == FormEsenzioni::Decision::Confirmed);
        CHECK(window.esenzioni[0].IDEsenzione == 15);
        CHECK(window.esenzioni[1].IDEsenzione == 12);
        CHECK(window.esenzioni[2].IDEsenzione == 99);
        CHECK(window.esenzioni[3].IDEsenzione == 13);
    }

    TEST_CASE("cancelling, by button or frame, changes nothing")
    {
        for (const bool byFrame : {false, true})
        {
            Window window;
            window.Type("c01");
            window.form.Clicked(window.assign);
            if (byFrame)
            {
                window.form.FrameClosed();
            }
            else
            {
                window.form.Clicked(Find<Button>(window.form, "A&nnulla"));
            }
            CHECK(window.form.IsClosed());
            CHECK(window.form.Result() == FormEsenzioni::Decision::Cancelled);
            CHECK(window.esenzioni[1].IDEsenzione == 0);
        }
    }

    TEST_CASE("without anything to assign it only waits for the confirmation")
    {
        FakeConnection database = LocalExemptions();
        FakeDesktop desktop;
        std::vector<SissExemption> none;
        FormEsenzioni form({}, none, database, desktop);
        auto& confirm = Find<Button>(form, "&Conferma");
        CHECK(form.InitialFocus() == &confirm);
        auto& search = Find<TextBox>(form, "Ce&rca");
        search.value = "diabete";
        form.Changed(search);
        form.Clicked(Find<Button>(form, "&Assegna")); // there is no row to give it to
        form.Clicked(confirm);
        CHECK(form.Result() == FormEsenzioni::Decision::Confirmed);
        CHECK(desktop.prompts.empty());
    }
}
