// A list of patients and a regional table brought in with the progress window, against bare programs doing the same
// work.
#include "environment/files.h"
#include "simulator/norda/ansi_file.h"
#include "simulator/norda/generated_data.h"
#include "tests/bench/measure.h"
#include "tests/bench/windows/bare_window.h"
#include "tests/bench/windows/bare_work.h"
#include "tests/bench/windows/library_run.h"
#include "tests/bench/windows/subjects.h"

#include <cstring>
#include <stdexcept>

namespace vellumo::bench
{
namespace
{

constexpr std::size_t patients = 1000;
constexpr std::size_t rows = 100000;

void Import(LibraryRun& run)
{
    if (!run.Provider().SincronizzaPazienti())
    {
        throw std::runtime_error("the list was not imported");
    }
}

void Synchronise(LibraryRun& run)
{
    run.Database().Execute("DELETE FROM SincronizzazioneTabella");
    run.Database().Execute("INSERT INTO SincronizzazioneTabella (Tabella, Data) "
                           "VALUES ('BRANCHE_SPECIALISTICHE', '2020-01-01 00:00:00')");
    if (!run.Provider().Sincronizza())
    {
        throw std::runtime_error("the tables were not synchronised");
    }
}

// The whole file, two columns of each row, two reports of each: of the position and of the text.
void ShowBare(const std::string& file, HWND window)
{
    BareProgress progress(window, rows);
    const auto text = environment::ReadFile(file).value();
    const char* line = std::strchr(text.c_str(), '\n') + 1; // behind the header
    const char* const end = text.c_str() + text.size();
    for (std::size_t row = 1; line < end; ++row)
    {
        const auto* const next =
            static_cast<const char*>(std::memchr(line, '\n', static_cast<std::size_t>(end - line)));
        const auto* const bar = static_cast<const char*>(std::memchr(line, '|', static_cast<std::size_t>(next - line)));
        const auto* const second =
            static_cast<const char*>(std::memchr(bar + 1, '|', static_cast<std::size_t>(next - bar - 1)));
        std::string label(line, bar);
        label.append(" - ").append(bar + 1, second == nullptr ? next : second);
        progress.Report(row, label);
        progress.Report(row, label);
        line = next + 1;
    }
}

} // namespace

bool MeasureList(LibraryRun& run, const std::filesystem::path& folder)
{
    const auto list = folder / "elenco.xml";
    norda::WritePatientList(list, patients);
    run.Choose(list);
    Import(run); // now all are known
    RecordedCalls calls;
    std::unique_ptr<BareWindow> window;
    bool isFirst = true;
    run.Database().SetObserver(
        [&](const std::string&)
        {
            if (std::exchange(isFirst, false))
            {
                window = std::make_unique<BareWindow>(LibraryRun::Window());
            }
        });
    calls.Record(run.Roots(), [&] { Import(run); });
    run.Database().SetObserver({});
    // From the choice on: the time that the system's file dialog takes before is not the library's.
    const auto timed = [&](const std::function<void()>& work)
    {
        return [&run, work]
        {
            work();
            return run.Told() - run.Chosen();
        };
    };
    const auto ours = timed([&] { Import(run); });
    const auto bare = timed(
        [&]
        {
            AskFile();
            ReadXml(environment::ReadFile(list.string()).value());
            window->ShowModal(
                [&](HWND open)
                {
                    BareProgress progress(open, patients);
                    std::size_t made = 0;
                    calls.Replay(run.Roots(),
                                 [&]
                                 {
                                     if (++made % (calls.Count() / patients) == 0) // as often as there are patients
                                     {
                                         progress.Report(made * patients / calls.Count(), "Importazione paziente...");
                                         progress.Report(made * patients / calls.Count(), "ROSSI MARIO");
                                     }
                                 });
                });
            MessageBoxW(nullptr, L"Fatto.", L"Fatto", MB_ICONINFORMATION);
        });
    return Report(CompareTimes("1000 known patients imported",
                               "MSXML reading the list, the same calls to the same COM objects, a bare window", 9, ours,
                               bare),
                  mostTimes);
}

bool MeasureTable(LibraryRun& run)
{
    norda::WriteTables(run.Practice().TablesFolder(), rows);
    std::unique_ptr<BareWindow> window;
    run.Database().SetObserver(
        [&](const std::string&)
        {
            if (const HWND open = LibraryRun::Window())
            {
                window = std::make_unique<BareWindow>(open);
            }
        });
    Synchronise(run);
    run.Database().SetObserver({});
    if (!window)
    {
        throw std::runtime_error("no window was seen");
    }
    const auto file = (run.Practice().TablesFolder() / "branche.txt").string();
    return Report(Compare(
                      "a table of 100000 rows shown", "a bare window, the file split, the same reports", 9,
                      [&] { Synchronise(run); }, [&] { window->ShowModal([&](HWND open) { ShowBare(file, open); }); }),
                  mostTimes);
}

} // namespace vellumo::bench
