// The results of the registration on a real screen: pictures, whole texts in rows as high as they need, the keyboard.
#include "platform/windows/forms/abridged.h"
#include "platform/windows/forms/win32_desktop.h"
#include "platform/windows/forms/wrapped_grid_view.h"
#include "simulator/screen/windows/cell_looks.h"
#include "simulator/screen/windows/robot.h"
#include "tests/platform/windows/steps.h"
#include "ui/form_ricetta_result.h"

#include <windows.h>

#include <doctest.h>

using namespace vellumo;
using namespace vellumo::ui;
using screen::CellOf;
using screen::Key;
using screen::Robot;
using screen::Steps;
using screen::Window;

namespace
{

std::string Lines(int count)
{
    std::string text = "Si sono verificati i seguenti errori:";
    for (int i = 1; i < count; ++i)
    {
        text += "\r\n - Priorità non ammessa (RIC-" + std::to_string(i) + ")";
    }
    return text;
}

// Two hundred; the fifth has more lines than the window, the third one line that is wider than its column.
std::vector<RicettaResult> ManyResults()
{
    std::vector<RicettaResult> results;
    for (int i = 0; i < 200; ++i)
    {
        results.push_back({.outcome = i % 2 == 0 ? RicettaResult::Outcome::Refused : RicettaResult::Outcome::Flagged,
                           .descrizione = Lines(2),
                           .prescrizioni = "Amoxicillina ( Quantità : 2 )\r\n"});
    }
    results[2].descrizione = "La prestazione richiesta non è erogabile con il codice di esenzione indicato, scaduto";
    results[4].descrizione = Lines(60);
    return results;
}

HWND GridOnScreen()
{
    const HWND form = FindWindowW(nullptr, L"Esito della registrazione delle ricette");
    return FindWindowExW(form, nullptr, windows::WrappedGridClass::name, nullptr);
}

int RowHeight(int row)
{
    const RECT area = screen::CellArea(GridOnScreen(), row, 1);
    return area.bottom - area.top;
}

std::size_t TextLength(int row, int column)
{
    std::wstring text(20000, L'\0');
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    return static_cast<std::size_t>(
        SendMessageW(GridOnScreen(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item)));
}

int BottomOf(int row)
{
    return screen::CellArea(GridOnScreen(), row, 1).bottom;
}

// How many pixels of a cell are not its background, without the lines around it.
int Ink(int row)
{
    const HWND grid = GridOnScreen();
    UpdateWindow(grid);
    RECT area = screen::CellArea(grid, row, 1);
    InflateRect(&area, -2, -2);
    const HDC screen = GetDC(grid);
    const COLORREF background = GetPixel(screen, area.left, area.top);
    int ink = 0;
    for (int y = area.top; y < area.bottom; ++y)
    {
        for (int x = area.left; x < area.right; ++x)
        {
            ink += GetPixel(screen, x, y) != background ? 1 : 0;
        }
    }
    ReleaseDC(grid, screen);
    return ink;
}

FormRicettaResult::Decision Run(std::vector<Steps::Step> steps, const std::vector<RicettaResult>& results)
{
    windows::Win32Desktop desktop;
    FormRicettaResult form(results, 0);
    Steps operatorSteps(std::move(steps));
    const Robot robot(operatorSteps);
    desktop.ShowModal(form);
    CHECK(operatorSteps.Done());
    return form.Result();
}

Steps::Step OnRow(std::size_t row)
{
    return [row](Window& window)
    {
        CHECK(window.All<Grid>().at(0)->selected == row);
        RECT inner{};
        GetClientRect(GridOnScreen(), &inner);
        CHECK(BottomOf(static_cast<int>(row)) > 0);
        CHECK(screen::CellArea(GridOnScreen(), static_cast<int>(row), 1).top < inner.bottom);
    };
}

} // namespace

TEST_SUITE("results of the registration on screen")
{
    TEST_CASE("two hundred prescriptions: pictures, whole texts, heights that follow the width")
    {
        const auto results = ManyResults();
        const auto result =
            Run({[&](Window& window)
                 {
                     const auto& grid = *window.All<Grid>().at(0);
                     REQUIRE(grid.columns.size() == 3);
                     CHECK(grid.columns[0].caption.empty());
                     CHECK(grid.columns[1].caption == "Descrizione");
                     CHECK(grid.columns[2].caption == "Prescrizioni");
                     CHECK(grid.rows.size() == 200);
                     CHECK(grid.selected == 0);
                     CHECK(window.All<Label>().size() == 6);
                     CHECK(CellOf(window, 0, 0).image == Image::Error);
                     CHECK(CellOf(window, 1, 0).image == Image::Warning);
                     CHECK(CellOf(window, 1, 1).image == Image::None);
                     CHECK_FALSE(CellOf(window, 0, 0).foreground);
                     CHECK_FALSE(CellOf(window, 1, 1).foreground);
                     CHECK(CellOf(window, 4, 1).text == results[4].descrizione);
                     CHECK(CellOf(window, 199, 2).text == results[199].prescrizioni);
                     CHECK(CellOf(window, 199, 0).image == Image::Warning);

                     const int twoLines = RowHeight(0);
                     const int line = RowHeight(4) / 60;
                     CHECK(RowHeight(4) > 57 * line);
                     CHECK(twoLines >= 2 * line);
                     CHECK(twoLines < 4 * line);
                     CHECK(RowHeight(2) == twoLines); // its text is broken once
                 },
                 [](Window& window)
                 {
                     const int before = RowHeight(2);
                     const int unbroken = RowHeight(4);
                     SetWindowPos(GetParent(GridOnScreen()), nullptr, 0, 0, 1020, 600, SWP_NOZORDER | SWP_NOACTIVATE);
                     CHECK(RowHeight(2) < before); // now on one line
                     CHECK(RowHeight(4) == unbroken);
                     window.CloseByFrame();
                 }},
                results);
        CHECK(result == FormRicettaResult::Decision::CancelRefused);
    }

    TEST_CASE("the selected row shows its text to the last line")
    {
        Run({[](Window&)
             {
                 CHECK(Ink(1) > 0);
                 CHECK(Ink(0) == Ink(1)); // the same text; the first is selected
             },
             Key("Down"), [](Window&) { CHECK(Ink(0) == Ink(1)); }, [](Window& window) { window.CloseByFrame(); }},
            ManyResults());
    }

    TEST_CASE("of a reply of megabytes in the place of a reason the beginning is shown")
    {
        auto results = ManyResults();
        results[0].descrizione = std::string(windows::longestInAWindow, 'x');
        results[1].descrizione = std::string(3'000'000, 'x');
        Run({[&](Window& window)
             {
                 CHECK(TextLength(0, 1) == windows::longestInAWindow);
                 CHECK(TextLength(1, 1) == windows::longestInAWindow + 1); // and an ellipsis
                 CHECK(RowHeight(1) < 2 * RowHeight(0));
                 window.CloseByFrame();
             }},
            results);
    }

    TEST_CASE("read and answered by keyboard alone; a row taller than the window is read to its end")
    {
        int topOfTall = 0;
        std::vector<Steps::Step> steps = {OnRow(0),      Key("Down"), OnRow(1), Key("End"),  OnRow(199),
                                          Key("PageUp"), Key("Home"), OnRow(0), Key("Down"), Key("Down"),
                                          Key("Down"),   Key("Down"), OnRow(4)};
        steps.push_back([&](Window&) { topOfTall = BottomOf(4); });
        steps.push_back(Key("Down"));
        steps.push_back(OnRow(4)); // still there, further down in it
        steps.push_back([&](Window&) { CHECK(BottomOf(4) < topOfTall); });
        steps.push_back(Key("PageDown"));
        steps.push_back(OnRow(4));
        steps.push_back(Key("Tab")); // to the details, which keep neither Escape nor Tab to themselves
        steps.push_back(Key("Escape"));
        steps.push_back(Key("Tab"));
        steps.push_back(Key("Space")); // the first button
        CHECK(Run(steps, ManyResults()) == FormRicettaResult::Decision::PrintWithoutIup);
    }

    TEST_CASE("Escape does nothing, Enter goes on; an empty list starts on the button that goes on")
    {
        const auto stillOpen = [](Window& window) { CHECK(window.All<Button>().at(1)->isDefault); };
        CHECK(Run({Key("Escape"), stillOpen, Key("Enter")}, ManyResults()) ==
              FormRicettaResult::Decision::CancelRefused);
        CHECK(Run({[](Window& window) { CHECK(window.All<Grid>().at(0)->rows.size() == 0); }, Key("Tab"), Key("Space")},
                  {}) == FormRicettaResult::Decision::CancelAll);
    }
}
