// The windows at a terminal: what is written, which lines are understood, what the end of the input does.
#include "platform/native/console_desktop.h"
#include "platform/native/console_text.h"
#include "ui/form_progress.h"
#include "ui/form_ricetta_result.h"

#include <doctest.h>

#include <sstream>

using namespace vellumo;
using namespace vellumo::ui;

namespace
{

// One control of each kind that takes input, and a record of what the form was told.
class SampleForm final : public Form
{
public:
    SampleForm()
        : Form("Prova")
    {
        grid.columns = {{"A", "Colonna", 1100}, {"B", "Altra", 1100}};
        for (int i = 1; i <= 100; ++i)
        {
            grid.rows.push_back({Cell{"età " + std::to_string(i)}, Cell{"testo più lungo della colonna"}});
        }
        grid.rows[0][0].strong = true;
        ok.isDefault = true;
        disabled.enabled = false;
        list.entries = {"primo", "secondo"};
        m_controls = {&label, &grid, &box, &check, &first, &second, &list, &disabled, &ok};
    }
    void Clicked(Control& control) override
    {
        told += 'c' + control.text + ' ';
        if (&control == &ok)
        {
            Close();
        }
    }
    void Changed(Control& control) override { told += 'v' + control.text + ' '; }
    void FrameClosed() override
    {
        told += "frame";
        Close();
    }

    Label label{"Tom & Jerry"};
    Grid grid{"&Righe"};
    TextBox box{"&Testo:"};
    CheckBox check{"&Casella"};
    OptionButton first{"&Prima"};
    OptionButton second{"&Seconda"};
    ComboBox list;
    Button disabled{"&Disabilitato"};
    Button ok{"&OK"};
    std::string told;
};

struct Terminal
{
    std::istringstream in;
    std::ostringstream out;
    native::ConsoleDesktop desktop{in, out};

    explicit Terminal(const std::string& lines)
        : in(lines)
    {
    }
    [[nodiscard]] bool Shows(const std::string& text) const { return out.str().find(text) != std::string::npos; }
};

} // namespace

TEST_SUITE("console")
{
    TEST_CASE("each kind of control is operated by its letter")
    {
        SampleForm form;
        Terminal terminal("r 42\nt età avanzata\nC\ns\n1 2\n\nmai letto\n");
        terminal.desktop.ShowModal(form);
        CHECK(form.IsClosed());
        CHECK(form.told == "v&Righe v&Testo: c&Casella c&Seconda v c&OK ");
        CHECK(form.grid.selected == 41);
        CHECK(form.box.value == "età avanzata");
        CHECK(form.check.checked);
        CHECK(form.second.selected);
        CHECK(form.list.index == 1);
        CHECK(terminal.Shows("Tom & Jerry\n"));
        CHECK(terminal.Shows(" *    1  età 1      testo più… \n")); // columns stand straight in spite of the accents
        CHECK(terminal.Shows(">    42  età 42"));
        CHECK(terminal.Shows("righe 32-51 di 100"));
        CHECK(terminal.Shows("[d] Disabilitato (non disponibile)"));
    }

    TEST_CASE("what is not understood changes nothing and is explained")
    {
        for (const char* line : {"x", "r 0", "r 101", "r abc", "r", "d", "ok", "1 3"})
        {
            CAPTURE(line);
            SampleForm form;
            Terminal terminal(std::string(line) + "\no\n");
            terminal.desktop.ShowModal(form);
            CHECK(form.told == "c&OK ");
            CHECK(terminal.Shows("Non è possibile."));
        }
    }

    TEST_CASE("results of prescriptions: whole texts in columns, pictures as marks, a letter for each button")
    {
        FormRicettaResult form(
            {{.outcome = RicettaResult::Outcome::Refused,
              .descrizione = "Si sono verificati i seguenti errori:\r\n - Priorità non ammessa per una "
                             "prestazione di quantità superiore a uno (RIC-0042)",
              .prescrizioni = "Visita ( Quantità : 2 )\r\nRicercaAnticorpiAntiTireoglobulinaEAnti"
                              "Perossidasi\r\n",
              .ricetta = "Ricetta accertamenti 102, numero 1"},
             {.outcome = RicettaResult::Outcome::Flagged, .descrizione = "Breve", .prescrizioni = "Una"}},
            1);
        Terminal terminal("1\n");
        terminal.desktop.ShowModal(form);
        CHECK(form.Result() ==
              FormRicettaResult::Decision::CancelAll); // the second of the buttons that want the same letter
        CHECK(
            terminal.Shows("[a] Annulla ricette errate e prosegui (Invio)\nAnnulla 1 ricetta rifiutata, salva i codici "
                           "delle altre e prosegue.\n[1] Annulla operazione\n"));
        CHECK(terminal.Shows("Dettagli della ricetta selezionata\nPaziente: non indicato\r\nRicetta accertamenti 102, "
                             "numero 1: rifiutata dal SISS.\n"));
        CHECK(terminal.Shows("(X) Rappresentano le ricette che sono state rifiutate dal SISS.\n"));
        const std::string blank(14, ' ');
        const auto line = [](const std::string& text, std::size_t width) { return native::Fitted(text, width) + ' '; };
        CHECK(terminal.Shows(
            ">     1  (X)  " + line("Si sono verificati i seguenti errori:", 56) + line("Visita ( Quantità : 2 )", 38) +
            '\n' + blank + line(" - Priorità non ammessa per una prestazione di quantità", 56) +
            "RicercaAnticorpiAntiTireoglobulinaEAnt \n" + blank + line("superiore a uno (RIC-0042)", 56) +
            line("iPerossidasi", 38) + "\n      2  (!)  " + line("Breve", 56) + line("Una", 38) + '\n'));
    }

    TEST_CASE("the end of the input closes by the frame")
    {
        SampleForm form;
        Terminal terminal("");
        terminal.desktop.ShowModal(form);
        CHECK(form.told == "frame");

        using Case = std::pair<Buttons, Answer>;
        for (const auto& [buttons, answer] :
             {Case{Buttons::Ok, Answer::Ok}, Case{Buttons::YesNo, Answer::No},
              Case{Buttons::YesNoCancel, Answer::Cancel}, Case{Buttons::RetryCancel, Answer::Cancel}})
        {
            CHECK(terminal.desktop.Show({"Testo", "Titolo", Icon::None, buttons, 1}) == answer);
        }
        CHECK_FALSE(terminal.desktop.AskFile("Importa", "XML (*.xml)|*.xml"));
    }

    TEST_CASE("a question is answered by letter or with the default by an empty line")
    {
        Terminal terminal("boh\nS\n\nr\n");
        CHECK(terminal.desktop.Show({"Si vuole?", "Attenzione!!", Icon::Exclamation, Buttons::YesNo, 2}) ==
              Answer::Yes);
        CHECK(terminal.Shows("=== (!) Attenzione!! ===\nSi vuole?\n [s] Sì [n] No (Invio)\n"));
        CHECK(terminal.desktop.Show({"Si vuole?", "Attenzione!!", Icon::Exclamation, Buttons::YesNo, 2}) == Answer::No);
        CHECK(terminal.desktop.Show({"?", "!", Icon::None, Buttons::RetryCancel, 1}) == Answer::Retry);
    }

    TEST_CASE("a long job writes its last state, not each report")
    {
        FormProgress form;
        form.InitializeProgress("Sincronizzazione", "Tabelle");
        form.OnActivate[form.Tag] = [](FormProgress& sender, const std::any&, std::any&)
        {
            for (int i = 0; i <= 1000; ++i)
            {
                sender.SetProgressInformation("Lettura", "riga " + std::to_string(i));
                sender.SetProgressValue(i, 1000);
            }
        };
        Terminal terminal("");
        terminal.desktop.ShowModal(form);
        CHECK(terminal.Shows("[Sincronizzazione] Tabelle Lettura riga 1000 100% 1.000 di 1.000\n"));
        const std::string text = terminal.out.str();
        CHECK(std::count(text.begin(), text.end(), '\n') < 100);
    }
}
