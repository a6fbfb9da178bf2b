// window_bench: how long our windows take to open and close, against bare ones with the same controls, and how the
// whole library compares with bare programs. Exit code 0 when the bounds are kept.
//
//   window_bench [windows|creation|call|list|table|memory...]    all unless some are named
#include "platform/windows/forms/win32_desktop.h"
#include "tests/bench/measure.h"
#include "tests/bench/windows/bare_window.h"
#include "tests/bench/windows/subjects.h"
#include "tests/support/fake_host.h"
#include "ui/form_esenzioni.h"
#include "ui/form_paziente_changes.h"
#include "ui/form_ricetta_result.h"
#include "ui/form_stampa.h"

#include <windows.h>
// After windows.h.
#include <objbase.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::bench
{
namespace
{

constexpr int rounds = 40;

// Closes whatever dialog opens, once it stands on the screen and has drawn itself.
LRESULT CALLBACK CloseShown(int code, WPARAM wParam, LPARAM lParam) noexcept
{
    const auto& message = *reinterpret_cast<const CWPRETSTRUCT*>(lParam);
    if (code == HC_ACTION && message.message == WM_SHOWWINDOW && message.wParam != FALSE &&
        (GetWindowLongPtrW(message.hwnd, GWL_STYLE) & WS_CHILD) == 0)
    {
        PostMessageW(message.hwnd, WM_CLOSE, 0, 0);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

// The model of the bare window is the first one that we show.
std::unique_ptr<BareWindow> model;

LRESULT CALLBACK CopyClosing(int code, WPARAM wParam, LPARAM lParam) noexcept
{
    const auto& message = *reinterpret_cast<const MSG*>(lParam);
    if (code == HC_ACTION && wParam == PM_REMOVE && message.message == WM_CLOSE && !model)
    {
        model = std::make_unique<BareWindow>(message.hwnd);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

using Maker = std::function<std::unique_ptr<ui::Form>()>;

bool Measure(const char* what, const Maker& make)
{
    windows::Win32Desktop desktop; // as a provider has it, all the time
    const auto showOurs = [&]
    {
        const auto form = make();
        desktop.ShowModal(*form);
    };
    const HHOOK closing = SetWindowsHookExW(WH_CALLWNDPROCRET, &CloseShown, nullptr, GetCurrentThreadId());
    model.reset();
    const HHOOK copying = SetWindowsHookExW(WH_GETMESSAGE, &CopyClosing, nullptr, GetCurrentThreadId());
    showOurs();
    UnhookWindowsHookEx(copying);
    const windows::CommonControls controls; // the bare one has the same visual styles
    const auto showBare = [&]
    {
        const windows::CommonControls::Scope scope(controls);
        model->ShowModal();
    };
    showBare();
    const bool good = Report(Compare(what, "a bare one with the same controls", rounds, showOurs, showBare), mostTimes);
    UnhookWindowsHookEx(closing);
    return good;
}

ui::ComparedPatient Patient(const char* cognome)
{
    return {{{"CodiceFiscale", "RSSMRA70A01F205X"}, {"Cognome", cognome}, {"Nome", "Mario"}},
            {{1, "048", "Soggetti affetti da patologie neoplastiche maligne"}}};
}

std::vector<ui::RicettaResult> Results()
{
    std::vector<ui::RicettaResult> results(10);
    for (auto& result : results)
    {
        result = {.descrizione =
                      "Si sono verificati i seguenti errori:\r\n - Farmaco non più in commercio. (GSSC000021)",
                  .prescrizioni = "RAMIPRIL 5 mg 14 compresse ( Quantità : 2 )\r\n"};
    }
    return results;
}

bool MeasureWindows()
{
    windows::Win32Desktop desktop;
    tests::FakeConnection catalogue;
    catalogue.rowsOf = [](const std::string&)
    {
        tests::Rows rows;
        for (int i = 0; i < 300; ++i)
        {
            const std::string code = "L" + std::to_string(i);
            rows.push_back({{"0", i}, {"1", "Affezioni del sistema circolatorio " + code}, {"2", code}, {"3", 1}});
        }
        return rows;
    };
    std::vector<ui::SissExemption> esenzioni = {{"048", "Neoplasie", {}, {}, 7}, {"C03", "Invalidi", {}, {}, 0}};
    host::OpzioniRicetta opzioni;
    opzioni.TipoRicetta = host::OpzioniRicetta::electronic;
    bool good = true;
    good = Measure("opening and closing FormStampa", [&] { return std::make_unique<ui::FormStampa>(opzioni); }) && good;
    good = Measure("opening and closing FormEsenzioni, 300 local ones",
                   [&] { return std::make_unique<ui::FormEsenzioni>(ui::Whom(), esenzioni, catalogue, desktop); }) &&
           good;
    good = Measure("opening and closing FormPazienteChanges",
                   [&]
                   {
                       return std::make_unique<ui::FormPazienteChanges>(Patient("ROSSI"), Patient("BIANCHI"),
                                                                        ui::update::byDefault, desktop);
                   }) &&
           good;
    good = Measure("opening and closing FormRicettaResult, 10 refusals",
                   [&] { return std::make_unique<ui::FormRicettaResult>(Results(), 0); }) &&
           good;
    return good;
}

} // namespace
} // namespace vellumo::bench

int main(int count, char** arguments)
{
    using namespace vellumo::bench;
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    int code = 2;
    const auto folder =
        std::filesystem::temp_directory_path() / ("vellumo-bench-" + std::to_string(GetCurrentProcessId()));
    try
    {
        std::filesystem::create_directories(folder);
        const std::vector<std::string> words(arguments + 1, arguments + count);
        const Wanted isWanted = [&](std::string_view what)
        { return words.empty() || std::find(words.begin(), words.end(), what) != words.end(); };
        const bool windows = !isWanted("windows") || MeasureWindows();
        code = MeasureLibrary(folder, isWanted) && windows ? 0 : 1;
    }
    catch (const std::exception& fault)
    {
        std::fprintf(stderr, "window_bench: %s\n", fault.what());
    }
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    CoUninitialize();
    return code;
}
