// The window with the results of the registration: what it lists, and what each way out of it answers.
#include "tests/support/fake_desktop.h"
#include "ui/form_ricetta_result.h"

#include <doctest.h>

using namespace vellumo;
using namespace vellumo::tests;
using namespace vellumo::ui;

namespace
{

const std::vector<RicettaResult> oneOfEach = {
    {true, "Errore\r\n - Codice (1)", "Uno ( Quantità : 1 )\r\n"}, {false, "Anomalia", "Due"}, {true, "Errore", "Tre"}};

} // namespace

TEST_SUITE("FormRicettaResult")
{
    TEST_CASE("refused and flagged prescriptions are listed in order, with their whole texts")
    {
        const FormRicettaResult form(oneOfEach);
        const auto& grid = Find<Grid>(form, "&Ricette rifiutate: 2, accettate con anomalie: 1");
        REQUIRE(grid.rows.size() == 3);
        CHECK(grid.rows[0][0].image == Image::Error);
        CHECK(grid.rows[0][1].text == oneOfEach[0].descrizione);
        CHECK(grid.rows[0][2].text == oneOfEach[0].prescrizioni);
        CHECK(grid.rows[1][0].image == Image::Warning);
        CHECK(grid.rows[2][0].image == Image::Error);
        CHECK(form.InitialFocus() == &grid);
    }

    TEST_CASE("without anything to list the window says so and waits on the button that goes on")
    {
        const FormRicettaResult form({});
        CHECK(Find<Grid>(form, "&Ricette: nessuna rifiutata, nessuna con anomalie").rows.empty());
        CHECK(form.InitialFocus() == &Find<Button>(form, "&Annulla ricette errate"));
    }

    TEST_CASE("each button has its answer; the frame counts as the second")
    {
        using Case = std::pair<const char*, FormRicettaResult::Decision>;
        for (const auto& [button, result] : {Case{"&Stampa", FormRicettaResult::Decision::PrintWithoutIup},
                                             Case{"&Annulla ricette", FormRicettaResult::Decision::CancelRefused},
                                             Case{"&Annulla op", FormRicettaResult::Decision::CancelAll}})
        {
            FormRicettaResult form(oneOfEach);
            form.Clicked(Find<Button>(form, button));
            CHECK(form.IsClosed());
            CHECK(form.Result() == result);
        }

        FormRicettaResult form(oneOfEach);
        form.Clicked(Find<Grid>(form, "")); // a double click on a row
        CHECK_FALSE(form.IsClosed());
        form.FrameClosed();
        CHECK(form.IsClosed());
        CHECK(form.Result() == FormRicettaResult::Decision::CancelRefused);
    }
}
