// The window with the results of the registration: what it lists, and what each way out of it answers.
#include "tests/support/fake_desktop.h"
#include "ui/form_ricetta_result.h"

#include <doctest.h>

using namespace vellumo;
using namespace vellumo::tests;
using namespace vellumo::ui;

namespace
{

using Outcome = RicettaResult::Outcome;

const std::vector<RicettaResult> oneOfEach = {
    {Outcome::Refused,
     "Errore\r\n - Codice (1)",
     "Uno ( Quantità : 1 )\r\n",
     "Ricetta farmaci 7, numero 1",
     {"Rossi", "Ada", "F", *host::Date::FromCalendar(1970, 1, 5), "RSSDAA70A45F205X"}},
    {Outcome::Flagged, "Anomalia", "Due", "Ricetta farmaci 7, numero 2", {}},
    {Outcome::WithoutAnswer, "Errore", "Tre", "Ricetta accertamenti 8, numero 1", {"Rossi", "Piero", "", {}, ""}}};

} // namespace

TEST_SUITE("FormRicettaResult")
{
    TEST_CASE("refused and flagged prescriptions are listed in order, with their whole texts")
    {
        FormRicettaResult form(oneOfEach, 4);
        auto& grid = Find<Grid>(form, "&Ricette rifiutate: 1, senza risposta: 1, accettate con anomalie: 1");
        REQUIRE(grid.rows.size() == 3);
        CHECK(grid.rows[0][0].image == Image::Error);
        CHECK(grid.rows[0][1].text == oneOfEach[0].descrizione);
        CHECK(grid.rows[0][2].text == oneOfEach[0].prescrizioni);
        CHECK(grid.rows[1][0].image == Image::Warning);
        CHECK(grid.rows[2][0].image == Image::Error);
        CHECK(form.InitialFocus() == &grid);
        const auto& details = Find<TextBox>(form, "&Dettagli");
        CHECK(details.value == "Paziente: Rossi Ada, nata il 05/01/1970, codice fiscale RSSDAA70A45F205X\r\n"
                               "Ricetta farmaci 7, numero 1: rifiutata dal SISS.");
        grid.selected = 1;
        form.Changed(grid);
        CHECK(details.value ==
              "Paziente: non indicato\r\nRicetta farmaci 7, numero 2: accettata dal SISS con anomalie.");
        grid.selected = 2;
        form.Changed(grid);
        CHECK(details.value.starts_with("Paziente: Rossi Piero\r\nRicetta accertamenti 8, numero 1: senza risposta."));
    }

    TEST_CASE("what a button cancels is counted, in words that agree")
    {
        const auto cancels = [](int refused, int withoutAnswer)
        {
            std::vector<RicettaResult> results(static_cast<std::size_t>(refused + withoutAnswer));
            for (int i = 0; i < withoutAnswer; ++i)
            {
                results[static_cast<std::size_t>(i)].outcome = Outcome::WithoutAnswer;
            }
            const std::string text = Find<Button>(FormRicettaResult(results, 1), "&Annulla ricette").explanation->text;
            return text.substr(0, text.find(','));
        };
        CHECK(cancels(1, 0) == "Annulla 1 ricetta rifiutata");
        CHECK(cancels(2, 1) == "Annulla 2 ricette rifiutate e 1 senza risposta");
        CHECK(cancels(0, 1) == "Annulla 1 ricetta senza risposta");
        CHECK(cancels(0, 2) == "Annulla 2 ricette senza risposta");
    }

    TEST_CASE("without anything to list the window says so and waits on the button that goes on")
    {
        const FormRicettaResult form({}, 1);
        CHECK(form.Controls()[0]->text == "Il SISS ha accettato 1 ricetta; nessuna rifiutata o segnalata.");
        CHECK(Find<Grid>(form, "&Ricette").rows.empty());
        CHECK_FALSE(Find<TextBox>(form, "&Dettagli").visible);
        CHECK(form.InitialFocus() == &Find<Button>(form, "&Annulla ricette errate"));
    }

    TEST_CASE("each button has its answer; the frame counts as the second")
    {
        using Case = std::pair<const char*, FormRicettaResult::Decision>;
        for (const auto& [button, result] : {Case{"&Stampa", FormRicettaResult::Decision::PrintWithoutIup},
                                             Case{"&Annulla ricette", FormRicettaResult::Decision::CancelRefused},
                                             Case{"&Annulla op", FormRicettaResult::Decision::CancelAll}})
        {
            FormRicettaResult form(oneOfEach, 4);
            form.Clicked(Find<Button>(form, button));
            CHECK(form.IsClosed());
            CHECK(form.Result() == result);
        }

        FormRicettaResult form(oneOfEach, 4);
        form.Clicked(Find<Grid>(form, "")); // a double click on a row
        CHECK_FALSE(form.IsClosed());
        form.FrameClosed();
        CHECK(form.IsClosed());
        CHECK(form.Result() == FormRicettaResult::Decision::CancelRefused);
    }
}
