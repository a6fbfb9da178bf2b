// The windows on a real screen: worked by keyboard alone, the host's windows meanwhile, faults, and the program's end.
#include "host/fault.h"
#include "platform/windows/forms/win32_desktop.h"
#include "simulator/screen/windows/robot.h"
#include "tests/platform/windows/steps.h"
#include "tests/support/local_exemptions.h"
#include "ui/form_esenzioni.h"
#include "ui/form_paziente_changes.h"
#include "ui/form_progress.h"
#include "ui/form_stampa.h"
#include "ui/form_wait.h"

#include <windows.h>

#include <doctest.h>

#include <functional>
#include <stdexcept>

using namespace vellumo;
using namespace vellumo::ui;
using screen::CellOf;
using screen::Key;
using screen::Keys;
using screen::Robot;
using screen::Steps;
using screen::Window;
using screen::WindowKind;

namespace
{

// A window as the host has them, on screen and active.
class HostWindow
{
public:
    HostWindow()
        : m_window(CreateWindowExW(0, L"STATIC", L"Norda", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20, 20, 500, 300, nullptr,
                                   nullptr, nullptr, nullptr))
    {
        SetForegroundWindow(m_window);
    }
    ~HostWindow() { DestroyWindow(m_window); }
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;
    [[nodiscard]] bool IsEnabled() const { return IsWindowEnabled(m_window) != FALSE; }
    [[nodiscard]] HWND Get() const { return m_window; }

private:
    HWND m_window;
};

// Counts the messages that reach a window of the host; answers one of them with itself, without end.
constexpr UINT counted = WM_APP;
constexpr UINT endless = WM_APP + 1;
int messagesCounted = 0;

LRESULT CALLBACK Counting(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    messagesCounted += message == counted ? 1 : 0;
    if (message == endless)
    {
        PostMessageW(window, endless, 0, 0);
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

// Two buttons and what happens when the first is pressed.
class SampleForm final : public Form
{
public:
    explicit SampleForm(std::function<void()> onPress)
        : Form("Prova")
        , m_onPress(std::move(onPress))
    {
        m_controls = {&m_press, &m_disabled};
        m_disabled.sameLine = true;
        m_disabled.enabled = false;
    }
    void Clicked(Control& control) override
    {
        if (&control == &m_press)
        {
            m_onPress();
            m_press.enabled = false;
            m_disabled.enabled = true;
        }
    }

private:
    std::function<void()> m_onPress;
    Button m_press{"&Premi"};
    Button m_disabled{"&Altro"};
};

ComparedPatient Person(const std::string& cognome)
{
    return {{{"CodiceFiscale", "RSSMRA70A01F205X"}, {"Cognome", cognome}}, {}};
}

} // namespace

TEST_SUITE("windows on screen")
{
    TEST_CASE("exemptions are assigned and confirmed by keyboard alone")
    {
        tests::FakeConnection database = tests::LocalExemptions();
        std::vector<SissExemption> esenzioni = {
            {"C01", "Invalidi", {}, {}, 0}, {"E01", "Reddito", {}, {}, 11}, {"013", "Diabete", {}, {}, 0}};
        windows::Win32Desktop desktop;
        FormEsenzioni form({}, esenzioni, database, desktop);
        std::vector<Steps::Step> steps = {[](Window& window)
                                          {
                                              CHECK(window.All<Grid>().at(0)->selected == 0);
                                              CHECK(CellOf(window, 0, 2).text == "Assegna esenzione");
                                              CHECK(CellOf(window, 0, 2).foreground == 0x0000FF);
                                              CHECK(CellOf(window, 0, 2).background == 0xFFEFF6);
                                              CHECK_FALSE(CellOf(window, 1, 2).background);
                                              CHECK(window.All<Grid>().at(1)->rows.size() == 6);
                                              CHECK(window.All<Grid>().at(1)->selected == 2); // C01
                                          }};
        for (const char* key : {"i", "n", "v", "à"}) // accents do not matter
        {
            steps.push_back(Key(key));
        }
        steps.push_back(
            [](Window& window)
            {
                CHECK(window.All<TextBox>().at(1)->value == "invà");
                CHECK(window.All<Grid>().at(1)->rows.size() == 2);
                CHECK(window.All<Grid>().at(1)->selected == 0);
                CHECK(window.All<Button>().at(0)->enabled);
            });
        // The second match, from the search box; for the next row what is proposed; then another row of the list.
        for (const char* key : {"Down", "Enter", "Enter", "Alt+L", "Down", "Down", "Enter", "Alt+C"})
        {
            steps.push_back(Key(key));
        }
        Steps operatorSteps(steps);
        {
            const Robot robot(operatorSteps);
            desktop.ShowModal(form);
        }
        CHECK(operatorSteps.Done());
        CHECK(form.Result() == FormEsenzioni::Decision::Confirmed);
        CHECK(esenzioni[0].IDEsenzione == 14);
        CHECK(esenzioni[1].IDEsenzione == 11);
        CHECK(esenzioni[2].IDEsenzione == 13);
    }

    TEST_CASE("changes are chosen, questioned and confirmed by keyboard alone")
    {
        windows::Win32Desktop desktop;
        FormPazienteChanges form(Person("ROSSI"), Person("BIANCHI"), update::byDefault, desktop);
        std::vector<Steps::Step> steps = Keys({"Alt+R", "Shift+Tab", "Space", "Alt+C"});
        steps.push_back(
            [](Window& window)
            {
                REQUIRE(window.Kind() == WindowKind::Box);
                CHECK(window.Title() == "Attenzione");
                CHECK(window.Icon() == Icon::Exclamation);
                CHECK(window.Text() == "Sono stati rilevati cambiamenti a dati anagrafici del paziente.\r\n"
                                       "Si vuole acquisire l'elemento come NUOVO paziente?");
                const auto buttons = window.All<Button>();
                REQUIRE(buttons.size() == 3);
                CHECK(buttons[0]->text == "Yes");
                CHECK(buttons[1]->text == "No");
                CHECK(buttons[2]->text == "Cancel");
                CHECK(buttons[2]->isDefault);
                CHECK(window.Key("Enter")); // the default leaves the window open
            });
        steps.push_back(
            [](Window& window)
            {
                CHECK(window.Kind() == WindowKind::Form);
                const auto boxes = window.All<CheckBox>();
                REQUIRE(boxes.size() == 4);
                CHECK(boxes[0]->checked);
                CHECK(boxes[1]->checked); // addresses, in any case
                CHECK_FALSE(boxes[1]->enabled);
                CHECK_FALSE(boxes[2]->checked); // Shift+Tab led to it from the box that Alt+R ticked
                CHECK(boxes[3]->checked);
                CHECK_FALSE(boxes[3]->enabled);
                CHECK(CellOf(window, 1, 1).background == 0xFFF2CC);
                CHECK_FALSE(CellOf(window, 0, 1).background);
                CHECK(window.Key("Alt+C"));
            });
        steps.push_back(Key("Alt+N"));
        Steps operatorSteps(steps);
        {
            const Robot robot(operatorSteps);
            desktop.ShowModal(form);
        }
        CHECK(operatorSteps.Done());
        CHECK(form.Result() == FormPazienteChanges::Decision::Confirmed);
        CHECK(form.Changes() == (update::addresses | update::personalData | update::deleteExemptions));
    }

    TEST_CASE("options and their lists are chosen by keyboard alone")
    {
        windows::Win32Desktop desktop;
        host::OpzioniRicetta opzioni;
        opzioni.TipoRicetta = host::OpzioniRicetta::paperForm;
        FormStampa form(opzioni);
        std::vector<Steps::Step> steps = {[](Window& window)
                                          {
                                              CHECK(window.All<OptionButton>().at(0)->selected);
                                              const auto lists = window.All<ComboBox>();
                                              REQUIRE(lists.size() == 2);
                                              CHECK(lists[0]->enabled);
                                              CHECK(lists[0]->index == 1);
                                              CHECK_FALSE(lists[1]->enabled);
                                              CHECK(window.Key("Down")); // to the other option, past the list
                                          },
                                          [](Window& window)
                                          {
                                              CHECK_FALSE(window.All<OptionButton>().at(0)->selected);
                                              CHECK(window.All<OptionButton>().at(1)->selected);
                                              CHECK_FALSE(window.All<ComboBox>().at(0)->enabled);
                                              CHECK(window.All<ComboBox>().at(1)->enabled);
                                              CHECK(window.Key("Tab"));
                                          }};
        for (const char* key : {"Down", "Enter"})
        {
            steps.push_back(Key(key));
        }
        Steps operatorSteps(steps);
        {
            const Robot robot(operatorSteps);
            desktop.ShowModal(form);
        }
        CHECK(operatorSteps.Done());
        CHECK(form.Result() == FormStampa::Decision::Confirmed);
        CHECK(opzioni.TipoRicetta == host::OpzioniRicetta::electronic);
        CHECK(opzioni.ModalitaStampa == host::oreNessuna);
    }

    TEST_CASE("Escape cancels, a double click assigns, the frame closes")
    {
        windows::Win32Desktop desktop;
        tests::FakeConnection database = tests::LocalExemptions();
        std::vector<SissExemption> esenzioni = {{"C01", "Invalidi", {}, {}, 0}};
        for (const bool byFrame : {false, true})
        {
            FormEsenzioni form({}, esenzioni, database, desktop);
            Steps steps({[](Window& window) { window.DoubleClick(*window.All<Grid>().at(1), 2); },
                         [&](Window& window)
                         {
                             CHECK(CellOf(window, 0, 2).text == "C01 - Invalidità civile 100%");
                             if (byFrame)
                             {
                                 window.CloseByFrame();
                             }
                             else
                             {
                                 CHECK(window.Key("Escape"));
                             }
                         }});
            const Robot robot(steps);
            desktop.ShowModal(form);
            CHECK(steps.Done());
            CHECK(form.Result() == FormEsenzioni::Decision::Cancelled);
        }
    }

    TEST_CASE("all windows of the host are disabled meanwhile and enabled again, whatever happens")
    {
        const HostWindow first;
        const HostWindow second;
        windows::Win32Desktop desktop;
        const auto disabled = [&] { return !first.IsEnabled() && !second.IsEnabled(); };
        const auto enabled = [&] { return first.IsEnabled() && second.IsEnabled(); };

        SampleForm faulty([] { throw host::Fault("guasto"); });
        Steps pressing({[&](Window& window)
                        {
                            CHECK(disabled());
                            window.Press(*window.All<Button>().at(0));
                        }});
        {
            const Robot robot(pressing);
            CHECK_THROWS_WITH_AS(desktop.ShowModal(faulty), "guasto", host::Fault);
        }
        CHECK(enabled());

        Steps answering({[&](Window& window)
                         {
                             CHECK(disabled());
                             window.CloseByFrame();
                         }});
        {
            const Robot robot(answering);
            CHECK(desktop.Show({"Testo", "Titolo", Icon::Critical, Buttons::Ok, 1}) == Answer::Ok);
        }
        CHECK(enabled());
        CHECK(GetActiveWindow() == second.Get());
    }

    TEST_CASE("the keyboard moves on when the control that has it is disabled")
    {
        windows::Win32Desktop desktop;
        SampleForm form([] {});
        Steps steps({Key("Enter"), // the first button has the keyboard
                     [](Window& window)
                     {
                         CHECK_FALSE(window.All<Button>().at(0)->enabled);
                         CHECK(window.All<Button>().at(1)->enabled);
                         CHECK(IsWindowEnabled(GetFocus()) != FALSE);
                         window.CloseByFrame();
                     }});
        const Robot robot(steps);
        desktop.ShowModal(form);
        CHECK(steps.Done());
    }

    TEST_CASE("the program's end ends the window and is passed on")
    {
        windows::Win32Desktop desktop;
        SampleForm form([] {});
        Steps steps({[](Window&) { PostQuitMessage(7); }});
        const Robot robot(steps);
        desktop.ShowModal(form);
        MSG message;
        REQUIRE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE);
        CHECK(message.wParam == 7);
    }

    TEST_CASE("of a huge text the beginning is shown, whole characters and an ellipsis")
    {
        std::string emoji;
        for (int i = 0; i < 4000; ++i)
        {
            emoji += "😀"; // two units each
        }
        windows::Win32Desktop desktop;
        FormWait wait;
        wait.OnActivate = [&](FormWait& sender, const std::any&, std::any& result)
        {
            sender.SetOperazione("!" + emoji);
            result = Robot::Topmost()->All<Label>().at(0)->text;
        };
        desktop.ShowModal(wait);
        CHECK(std::any_cast<std::string>(wait.Result()) == "!" + emoji.substr(0, std::size_t{4} * 2499) + "…");

        Steps steps({[&](Window& box)
                     {
                         CHECK(box.Text() == emoji.substr(0, std::size_t{4} * 1999) + "…");
                         box.Press(*box.All<Button>().at(0));
                     }});
        const Robot robot(steps);
        desktop.Show({emoji, "Errore", Icon::Critical, Buttons::Ok, 1});
    }

    TEST_CASE("every report lets the host's messages through, also when they do not end")
    {
        windows::Win32Desktop desktop;
        FormProgress progress;
        progress.InitializeProgress("Sincronizzazione", "Tabelle");
        progress.OnActivate[progress.Tag] = [&](FormProgress& sender, const std::any&, std::any& result)
        {
            const HostWindow host;
            SetWindowLongPtrW(host.Get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Counting));
            messagesCounted = 0;
            for (int row = 1; row <= 20; ++row)
            {
                PostMessageW(host.Get(), counted, 0, 0);
                sender.SetProgressValue(row, 100);
                CHECK(messagesCounted == row);
            }
            PostMessageW(host.Get(), endless, 0, 0);
            PostMessageW(host.Get(), counted, 0, 0);
            sender.SetProgressInformation("Importazione", "Riga 21");
            CHECK(messagesCounted == 21);
            result = 1;
        };
        desktop.ShowModal(progress);
        CHECK(progress.Result().has_value());
    }

    TEST_CASE("a job runs with its window drawn; progress lets the host's messages through")
    {
        windows::Win32Desktop desktop;
        FormWait wait;
        bool seen = false;
        wait.OnActivate = [&](FormWait& sender, const std::any&, std::any& result)
        {
            sender.SetOperazione("Identificazione cittadino");
            const auto top = Robot::Topmost();
            REQUIRE(top);
            CHECK(top->Title() == "SISS Lombardia");
            const auto labels = top->All<Label>();
            REQUIRE(labels.size() == 3);
            CHECK(labels[0]->text == "Identificazione cittadino");
            CHECK(labels[1]->text == "Attendere...");
            CHECK(labels[2]->text == "Trasmissione/Ricezione dati in corso...");
            seen = true;
            result = 1;
        };
        desktop.ShowModal(wait);
        CHECK(seen);

        FormProgress progress;
        progress.InitializeProgress("Sincronizzazione", "Tabelle");
        progress.OnActivate[progress.Tag] = [&](FormProgress& sender, const std::any&, std::any& result)
        {
            const HostWindow host;
            PostMessageW(host.Get(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
            sender.SetProgressValue(3, 10);
            CHECK(IsIconic(host.Get()) != FALSE);
            desktop.Show({"Si vuole continuare?", "Attenzione!!", Icon::None, Buttons::Ok, 1});
            const auto top = Robot::Topmost(); // drawn at the latest before the box
            const auto bars = top->All<ProgressBar>();
            REQUIRE(bars.size() == 1);
            CHECK(bars[0]->value == 3);
            CHECK(bars[0]->maximum == 10);
            result = 1;
        };
        Steps steps({[](Window& box)
                     {
                         CHECK(box.Kind() == WindowKind::Box);
                         box.Press(*box.All<Button>().at(0));
                     }});
        const Robot robot(steps);
        desktop.ShowModal(progress);
        CHECK(progress.Result().has_value());
    }
}
