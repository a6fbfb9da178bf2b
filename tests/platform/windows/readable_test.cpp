// Windows that everybody can read: what screen readers get, colours of contrast schemes, a change of density while a
// window is open, rows as text.
#include "platform/windows/forms/win32_desktop.h"
#include "platform/windows/system/text.h"
#include "simulator/screen/windows/cell_looks.h"
#include "simulator/screen/windows/robot.h"
#include "tests/platform/windows/reader/accessible_tree.h"
#include "tests/platform/windows/steps.h"
#include "tests/support/local_exemptions.h"
#include "ui/form_esenzioni.h"
#include "ui/form_paziente_changes.h"
#include "ui/form_ricetta_result.h"
#include "ui/form_stampa.h"

#include <windows.h>
// After windows.h.
#include <commctrl.h>
#include <objbase.h>

#include <doctest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

using namespace vellumo;
using namespace vellumo::ui;
using screen::CellOf;
using screen::Key;
using screen::Robot;
using screen::Steps;
using screen::Window;

namespace
{

constexpr const wchar_t* title = L"Tutti i controlli";

// A control of each kind.
class EveryControl final : public Form
{
public:
    EveryControl()
        : Form("Tutti i controlli")
    {
        m_warning.image = Image::Warning;
        m_box.value = "invà";
        m_tick.checked = true;
        m_second.selected = true;
        m_entries.entries = {"Promemoria", "Niente"};
        m_entries.index = 1;
        m_entries.sameLine = true;
        m_list.columns = {{"A", "Codice", 1200}, {"B", "Stato", 3000}};
        m_list.rows = {{Cell{"048"}, Cell{.text = "Da assegnare", .foreground = 0x0000FF, .background = 0xFFEFF6}},
                       {Cell{"C01"}, Cell{.text = "Diverso", .background = 0xFFF2CC, .strong = true}},
                       {Cell{"C02"}, Cell{"Uguale"}}};
        m_list.selected = 0;
        m_list.visibleRows = 4;
        m_tall.wraps = true;
        m_tall.columns = {{"A", "", 500}, {"B", "Descrizione", 4000}};
        m_tall.rows = {{Cell{.image = Image::Error}, Cell{"Rifiutata:\r\n - esenzione scaduta"}},
                       {Cell{.image = Image::Warning}, Cell{.text = "Segnalata", .background = 0xFFF2CC}}};
        m_tall.visibleRows = 4;
        m_bar.value = 30;
        m_bar.maximum = 60;
        m_ok.isDefault = true;
        m_ok.explanation = &m_effect;
        m_effect.sameLine = true;
        m_off.enabled = false;
        m_off.sameLine = true;
        m_controls = {&m_warning, &m_box,     &m_tick, &m_first, &m_second, &m_entries, &m_list,
                      &m_tall,    &m_working, &m_bar,  &m_ok,    &m_effect, &m_off};
        m_initialFocus = &m_list;
        m_designSize = {6000, 7000};
    }

private:
    Label m_warning{"Dati diversi & altro"};
    TextBox m_box{"Ce&rca:"};
    CheckBox m_tick{"&Aggiorna"};
    OptionButton m_first{"RUR"};
    OptionButton m_second{"&Ricetta elettronica"};
    ComboBox m_entries;
    Grid m_list{"&Esenzioni"};
    Grid m_tall{""};
    Label m_working{"Importazione"};
    ProgressBar m_bar;
    Button m_ok{"&Conferma"};
    Label m_effect{"Salva."};
    Button m_off{"Annulla"};
};

const std::vector<std::string> whatIsRead = {
    "text \"Dati diversi & altro\"",
    "picture \"Avviso\"",
    "text \"Cerca:\"",
    "box \"Cerca:\" = invà Alt+R",
    "check box \"Aggiorna\" Alt+A [checked]",
    "option \"RUR\"",
    "option \"Ricetta elettronica\" Alt+R [checked]",
    "list \"Ricetta elettronica\" = Niente",
    "text \"Esenzioni\"",
    "table \"Esenzioni\" Alt+E [focused]",
    "  row \"Codice: 048; Stato: Da assegnare\" [selected, focused]",
    "    cell \"048\" [selected]: Codice",
    "    cell \"Da assegnare\" [selected]: Stato",
    "  row \"Codice: C01; Stato: Diverso\"",
    "    cell \"C01\": Codice",
    "    cell \"Diverso\": Stato",
    "  row \"Codice: C02; Stato: Uguale\"",
    "    cell \"C02\": Codice",
    "    cell \"Uguale\": Stato",
    "table \"Esenzioni\"",
    "  row \"Errore; Descrizione: Rifiutata:\r\n - esenzione scaduta\"",
    "    cell \"Errore\"",
    "    cell \"Rifiutata:\r\n - esenzione scaduta\": Descrizione",
    "  row \"Avviso; Descrizione: Segnalata\"",
    "    cell \"Avviso\"",
    "    cell \"Segnalata\": Descrizione",
    "text \"Importazione\"",
    "bar \"Importazione\" = 50%",
    "button \"Conferma\" Alt+C [default]: Salva.",
    "text \"Salva.\"",
    "button \"Annulla\" [disabled]",
};

void Run(std::vector<Steps::Step> steps)
{
    windows::Win32Desktop desktop;
    EveryControl form;
    steps.push_back([](Window& window) { window.CloseByFrame(); });
    Steps operatorSteps(std::move(steps));
    const Robot robot(operatorSteps);
    desktop.ShowModal(form);
    CHECK(operatorSteps.Done());
}

HWND OnScreen()
{
    return FindWindowW(nullptr, title);
}

HWND Child(const wchar_t* windowClass)
{
    return FindWindowExW(OnScreen(), nullptr, windowClass, nullptr);
}

// Runs it while this thread answers its questions; its exit code.
DWORD RunReader(const std::filesystem::path& file)
{
    std::array<wchar_t, 1000> self{};
    GetModuleFileNameW(nullptr, self.data(), static_cast<DWORD>(self.size()));
    const auto program = std::filesystem::path(self.data()).parent_path() / "screen_reader.exe";
    std::wstring command = L"\"" + program.wstring() + L"\" \"" + title + L"\" \"" + file.wstring() + L"\"";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    REQUIRE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process) !=
            FALSE);
    while (MsgWaitForMultipleObjects(1, &process.hProcess, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0)
    {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE)
        {
            DispatchMessageW(&message);
        }
    }
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

std::string Text(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
    {
        text += line + '\n';
    }
    return text;
}

class Apartment
{
public:
    Apartment() { REQUIRE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))); }
    ~Apartment() { CoUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

// The system's colours, changed while it lives.
class Scheme
{
public:
    Scheme(COLORREF window, COLORREF text)
        : m_before{GetSysColor(COLOR_WINDOW), GetSysColor(COLOR_WINDOWTEXT)}
    {
        Set({window, text});
    }
    ~Scheme() { Set(m_before); }
    Scheme(const Scheme&) = delete;
    Scheme& operator=(const Scheme&) = delete;

private:
    static void Set(const std::array<COLORREF, 2>& colours)
    {
        constexpr std::array<int, 2> names = {COLOR_WINDOW, COLOR_WINDOWTEXT};
        SetSysColors(2, names.data(), colours.data());
    }

    std::array<COLORREF, 2> m_before;
};

std::string ClipboardText()
{
    std::string text;
    REQUIRE(OpenClipboard(nullptr) != FALSE);
    if (const HANDLE memory = GetClipboardData(CF_UNICODETEXT))
    {
        text = windows::FromWide(static_cast<const wchar_t*>(GlobalLock(memory)));
        GlobalUnlock(memory);
    }
    CloseClipboard();
    return text;
}

int HeightOf(HWND window)
{
    RECT place{};
    GetWindowRect(window, &place);
    return place.bottom - place.top;
}

} // namespace

TEST_SUITE("readable for everybody")
{
    TEST_CASE("every control, row and cell has a name and a role, in the process and out of it")
    {
        const Apartment apartment;
        const auto file = std::filesystem::temp_directory_path() / "vellumo-read.txt";
        Run({[&](Window&)
             {
                 CHECK(Text(tests::AccessibleTree(OnScreen())) == Text(whatIsRead));
                 CHECK(RunReader(file) == 0);
                 std::ifstream in(file, std::ios::binary);
                 CHECK(std::string(std::istreambuf_iterator<char>(in), {}) == Text(whatIsRead));
             }});
        std::filesystem::remove(file);
    }

    TEST_CASE("nothing in the windows of the library is without a name or a role")
    {
        const Apartment apartment;
        windows::Win32Desktop desktop;
        auto catalogue = tests::LocalExemptions();
        std::vector<SissExemption> exemptions = {{"048", "Neoplasie", {}, {}, 7}, {"C03", "Invalidi", {}, {}, 0}};
        host::OpzioniRicetta options;
        FormStampa print(options);
        FormEsenzioni assigning({}, exemptions, catalogue, desktop);
        FormPazienteChanges comparison({{{"Cognome", "Rossi"}}, {}}, {{{"Cognome", "Bianchi"}}, {}}, update::byDefault,
                                       desktop);
        FormRicettaResult results({{.descrizione = "Rifiutata", .prescrizioni = "Amoxicillina"}}, 0);
        for (Form* const form : std::initializer_list<Form*>{&print, &assigning, &comparison, &results})
        {
            CAPTURE(form->Title());
            Steps steps(
                {[&](Window& window)
                 {
                     const HWND onScreen = FindWindowW(nullptr, windows::ToWide(form->Title()).c_str());
                     const auto lines = tests::AccessibleTree(onScreen);
                     CHECK(lines.size() > form->Controls().size() / 2);
                     for (const std::string& line : lines)
                     {
                         CAPTURE(line);
                         CHECK(line.find("role ") != 0);
                         // A cell may be empty; its row then says what is in the others.
                         CHECK((line.find(" \"\"") == std::string::npos || line.find("cell") != std::string::npos));
                     }
                     window.CloseByFrame();
                 }});
            const Robot robot(steps);
            desktop.ShowModal(*form);
            CHECK(steps.Done());
        }
    }

    TEST_CASE("with light text on a dark ground no colour of ours is used")
    {
        const auto coloured = [](bool ours)
        {
            return [ours](Window& window)
            {
                CHECK(CellOf(window, 0, 1).background.has_value() == ours);
                CHECK(CellOf(window, 0, 1).foreground.has_value() == ours);
                CHECK(CellOf(window, 1, 1).background.has_value() == ours);
                CHECK(window.Cell(*window.All<Grid>().at(1), 1, 1).background.has_value() == ours);
            };
        };
        Run({coloured(true), [](Window&) { SetFocus(Child(L"Button")); }});
        const Scheme dark(RGB(0, 0, 0), RGB(255, 255, 255));
        Run({[](Window&) { SetFocus(Child(L"Button")); }, coloured(false)});
    }

    TEST_CASE("a change of density scales fonts, rows and boxes, and the window follows")
    {
        int line = 0;
        int box = 0;
        int row = 0;
        Run({[&](Window&)
             {
                 line = HeightOf(Child(L"Static"));
                 box = HeightOf(Child(L"Edit"));
                 row = screen::CellArea(Child(WC_LISTVIEWW), 0, 0).bottom -
                       screen::CellArea(Child(WC_LISTVIEWW), 0, 0).top;
                 RECT suggested{10, 10, 600, 600};
                 SendMessageW(OnScreen(), WM_DPICHANGED, MAKEWPARAM(144, 144), reinterpret_cast<LPARAM>(&suggested));
             },
             [&](Window&)
             {
                 CHECK(HeightOf(Child(L"Static")) > line * 5 / 4);
                 CHECK(HeightOf(Child(L"Edit")) > box * 5 / 4);
                 const RECT first = screen::CellArea(Child(WC_LISTVIEWW), 0, 0);
                 CHECK(first.bottom - first.top > row * 5 / 4);
                 RECT inner{};
                 GetClientRect(OnScreen(), &inner);
                 for (HWND child = GetWindow(OnScreen(), GW_CHILD); child != nullptr;
                      child = GetWindow(child, GW_HWNDNEXT))
                 {
                     RECT place{};
                     GetWindowRect(child, &place);
                     MapWindowPoints(nullptr, OnScreen(), reinterpret_cast<POINT*>(&place), 2);
                     CHECK(place.right <= inner.right);
                     CHECK(place.bottom <= inner.bottom);
                 }
             }});
    }

    TEST_CASE("Ctrl+C copies the selected row of either kind of grid, with its picture as a word")
    {
        Run({Key("Ctrl+C"),
             [](Window& window)
             {
                 CHECK(ClipboardText() == "048\tDa assegnare\r\n");
                 SetFocus(GetDlgItem(OnScreen(), GetDlgCtrlID(Child(L"VellumoWrappedGrid"))));
                 window.Select(*window.All<Grid>().at(1), 0);
             },
             Key("Ctrl+C"), [](Window&) { CHECK(ClipboardText() == "Errore\tRifiutata:  - esenzione scaduta\r\n"); }});
    }
}
