// Comparing patient and citizen: what is shown as different, what the check boxes and the question make of the mask.
#include "ui/form_paziente_changes.h"

#include "tests/support/fake_desktop.h"

#include <doctest.h>

using namespace vellumo;
using namespace vellumo::tests;
using namespace vellumo::ui;

namespace
{

ComparedPatient Person()
{
    return {{{"CodiceFiscale", "RSSMRA70A01F205X"},
             {"Cognome", "ROSSI"},
             {"Nome", "MARIA"},
             {"Sesso", "F"},
             {"DataNascita", *host::Date::FromCalendar(1970, 1, 5)},
             {"ComuneNascita", "MILANO"},
             {"NumTesseraSanitaria", "123"},
             {"NumAssistito", "123"},
             {"Revocato", 0},
             {"CodiceRegioneAsl", "030"},
             {"CodiceAsl", "308"}},
            {}};
}

void Add(ComparedPatient& patient, int id, const std::string& codice)
{
    patient.exemptions.push_back({id, codice, "Descrizione " + codice});
}

struct AfterConfirming
{
    FormPazienteChanges::Decision result;
    std::int32_t changes;
    std::size_t questions;
    bool closed;
};

// Ticks the boxes as told ("ADR": personal data, exemptions, remove first) and confirms.
AfterConfirming Confirm(const ComparedPatient& paziente, const ComparedPatient& cittadino, const std::string& ticked,
                        std::optional<Answer> answer = std::nullopt)
{
    FakeDesktop desktop;
    if (answer)
    {
        desktop.answers.push_back(*answer);
    }
    FormPazienteChanges form(paziente, cittadino, update::byDefault, desktop);
    const auto tick = [&](const std::string& caption, char letter)
    {
        auto& box = Find<CheckBox>(form, caption);
        box.checked = ticked.find(letter) != std::string::npos;
        form.Clicked(box);
    };
    tick("Aggiorna i dati", 'A');
    tick("Aggiorna le", 'E');
    tick("&Rimuovi", 'R');
    form.Clicked(Find<Button>(form, "&Conferma"));
    return {form.Result(), form.Changes(), desktop.prompts.size(), form.IsClosed()};
}

} // namespace

TEST_SUITE("patient changes window")
{
    TEST_CASE("rows whose shown texts differ are marked")
    {
        ComparedPatient cittadino = Person();
        cittadino.values["NumTesseraSanitaria"] = "124";
        cittadino.values["NumAssistito"] = 123; // shown alike
        cittadino.values.erase("CodiceAsl");
        cittadino.values["Revocato"] = 1; // not shown
        FakeDesktop desktop;
        const FormPazienteChanges form(Person(), cittadino, update::byDefault, desktop);
        const auto& grid = Find<Grid>(form, "&Dati");
        REQUIRE(grid.rows.size() == 10);
        CHECK(grid.rows[4][0].text == "Data di nascita");
        CHECK(grid.rows[4][1].text == "05/01/1970");
        CHECK(grid.rows[9][2].text.empty());
        for (std::size_t row = 0; row < grid.rows.size(); ++row)
        {
            CAPTURE(grid.rows[row][0].text);
            const bool marked = row == 6 || row == 9;
            for (const Cell& cell : grid.rows[row])
            {
                CHECK(cell.background.has_value() == marked);
                CHECK(cell.strong == marked);
            }
        }
    }

    TEST_CASE("exemptions of one side only are listed")
    {
        ComparedPatient paziente = Person();
        ComparedPatient cittadino = Person();
        Add(paziente, 1, "E01");
        Add(paziente, 2, "C01");
        Add(cittadino, 2, "C01 SISS");
        Add(cittadino, 3, "013");
        FakeDesktop desktop;
        const FormPazienteChanges form(paziente, cittadino, update::byDefault, desktop);
        const auto& grid = Find<Grid>(form, "E&senzioni");
        REQUIRE(grid.rows.size() == 2);
        CHECK(grid.rows[0][0].text == "E01");
        CHECK(grid.rows[0][2].text == "Da Eliminare");
        CHECK(grid.rows[1][0].text == "013");
        CHECK(grid.rows[1][1].text == "Descrizione 013");
        CHECK(grid.rows[1][2].text == "Da Inserire");
        CHECK(Find<CheckBox>(form, "Aggiorna le").explanation->text == "1 nuova; 1 aggiornata con le date del SISS.");
    }

    TEST_CASE("beside each box stands what the confirmation will write, as the boxes are")
    {
        ComparedPatient paziente = Person();
        ComparedPatient cittadino = Person();
        Add(paziente, 1, "E01");
        Add(paziente, 2, "C01");
        Add(cittadino, 3, "013");
        cittadino.exemptions[0].lost = true;
        cittadino.values["Revocato"] = 1;
        cittadino.domicile.comune = "Milano";
        FakeDesktop desktop;
        FormPazienteChanges form(paziente, cittadino, update::byDefault, desktop);
        const auto effect = [&](const std::string& box) { return Find<CheckBox>(form, box).explanation->text; };
        CHECK(effect("Aggiorna i dati") == "Nessun dato cambia. Il paziente diventa revocato.");
        CHECK(effect("Aggiorna residenza") == "Sempre come nel SISS: 1 cambia.");
        CHECK(effect("Aggiorna le") == "Nessuna nuova. 1 da riassegnare non viene salvata.");
        CHECK(effect("&Rimuovi") == "Senza la spunta le 2 \"Da Eliminare\" restano al paziente.");
        CHECK(Find<Grid>(form, "E&senzioni diverse (3)").rows[2][2].text == "Da Riassegnare");
        auto& remove = Find<CheckBox>(form, "&Rimuovi");
        remove.checked = true;
        form.Clicked(remove);
        CHECK(effect("&Rimuovi") == "Le 2 esenzioni locali vengono eliminate, poi si salvano quelle del SISS.");
        for (const auto* const box : {"Aggiorna i dati", "Aggiorna le"})
        {
            Find<CheckBox>(form, box).checked = false;
            form.Clicked(Find<CheckBox>(form, box));
        }
        CHECK(effect("Aggiorna i dati") == "I dati anagrafici restano quelli locali.");
        CHECK(effect("Aggiorna le") == "Le esenzioni restano quelle locali.");
        CHECK(effect("&Rimuovi") == "Senza la spunta le 2 \"Da Eliminare\" restano al paziente.");
    }

    TEST_CASE("the check boxes start from the mask")
    {
        for (const std::int32_t mask : {0, 1, 4, 8, 12, 7})
        {
            CAPTURE(mask);
            FakeDesktop desktop;
            const FormPazienteChanges form({}, {}, mask, desktop);
            CHECK(Find<CheckBox>(form, "Aggiorna i dati").checked == ((mask & 1) != 0));
            CHECK(Find<CheckBox>(form, "Aggiorna le").checked == ((mask & 4) != 0));
            CHECK(Find<CheckBox>(form, "&Rimuovi").checked == ((mask & 8) != 0));
            CHECK(Find<CheckBox>(form, "&Rimuovi").enabled == ((mask & 4) != 0));
        }
    }

    TEST_CASE("without a question the mask is 2 and what is ticked")
    {
        const ComparedPatient person = Person();
        const std::vector<std::pair<std::string, std::int32_t>> masks = {{"", 2},   {"A", 3},   {"E", 6},   {"R", 10},
                                                                         {"AE", 7}, {"ER", 14}, {"AER", 15}};
        for (const auto& each : masks)
        {
            CAPTURE(each.first);
            const AfterConfirming outcome = Confirm(person, person, each.first);
            CHECK(outcome.result == FormPazienteChanges::Decision::Confirmed);
            CHECK(outcome.changes == each.second);
            CHECK(outcome.questions == 0);
        }
    }

    TEST_CASE("it asks whether this is a new patient when what identifies a person differs and would be stored")
    {
        for (const char* name : {"CodiceFiscale", "Cognome", "Nome", "DataNascita", "Sesso", "ComuneNascita"})
        {
            CAPTURE(name);
            const bool asks = std::string(name) != "Sesso" && std::string(name) != "ComuneNascita";
            ComparedPatient cittadino = Person();
            cittadino.values[name] = "ALTRO";
            CHECK(Confirm(Person(), cittadino, "A", Answer::No).questions == (asks ? 1 : 0));
            CHECK(Confirm(Person(), cittadino, "E", Answer::No).questions == 0);
        }
        ComparedPatient cittadino = Person();
        cittadino.values["Nome"] = "MARIO";
        CHECK(Confirm(Person(), cittadino, "A", Answer::Yes).changes == 4111);
        CHECK(Confirm(Person(), cittadino, "AR", Answer::No).changes == 11);
        const AfterConfirming cancelled = Confirm(Person(), cittadino, "A", Answer::Cancel);
        CHECK_FALSE(cancelled.closed);
        CHECK(cancelled.result == FormPazienteChanges::Decision::Cancelled);
        CHECK(cancelled.changes == 7);
    }

    TEST_CASE("the question's text, answers and safe default")
    {
        ComparedPatient cittadino = Person();
        cittadino.values["Cognome"] = "BIANCHI";
        FakeDesktop desktop;
        desktop.answers = {Answer::Yes};
        FormPazienteChanges form(Person(), cittadino, update::byDefault, desktop);
        form.Clicked(Find<Button>(form, "&Conferma"));
        REQUIRE(desktop.prompts.size() == 1);
        CHECK(desktop.prompts[0].title == "Attenzione");
        CHECK(desktop.prompts[0].text == "Sono stati rilevati cambiamenti a dati anagrafici del paziente.\r\n"
                                         "Si vuole acquisire l'elemento come NUOVO paziente?");
        CHECK(desktop.prompts[0].buttons == Buttons::YesNoCancel);
        CHECK(desktop.prompts[0].defaultButton == 3);
        CHECK(form.Result() == FormPazienteChanges::Decision::Confirmed);
    }

    TEST_CASE("closing by frame or button stores nothing")
    {
        for (const bool byFrame : {false, true})
        {
            FakeDesktop desktop;
            FormPazienteChanges form(Person(), Person(), update::byDefault, desktop);
            byFrame ? form.FrameClosed() : form.Clicked(Find<Button>(form, "A&nnulla"));
            CHECK(form.IsClosed());
            CHECK(form.Result() == FormPazienteChanges::Decision::Cancelled);
        }
    }
}
