// A table of a million rows brought into the database with the progress window at the console, and without any window.
#include "platform/native/console_form.h"
#include "simulator/norda/generated_data.h"
#include "tests/bench/measure.h"
#include "tests/bench/practice_run.h"
#include "tests/bench/subjects.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace vellumo::bench
{
namespace
{

constexpr std::size_t rows = 1000000;

void Synchronise(const norda::Practice& practice, const ShowForm& showForm)
{
    PracticeRun run(practice, {}, false, showForm);
    run.Database().Execute("DELETE FROM SincronizzazioneTabella");
    run.Database().Execute("INSERT INTO SincronizzazioneTabella (Tabella, Data) "
                           "VALUES ('BRANCHE_SPECIALISTICHE', '2020-01-01 00:00:00')");
    if (!run.Provider().Sincronizza())
    {
        throw std::runtime_error("the tables were not synchronised");
    }
}

} // namespace

bool MeasureProgress(const std::filesystem::path& folder)
{
    const norda::Practice practice(folder / "tables");
    practice.Create();
    norda::WriteTables(practice.TablesFolder(), rows);
    const auto onConsole = [](ui::Form& form)
    {
        std::istringstream in;
        std::ofstream out("/dev/null");
        native::ConsoleForm(form, in, out).ShowModal();
    };
    return Report(Compare(
                      "a table of a million rows with the progress window", "the same without a window", 25,
                      [&] { Synchronise(practice, onConsole); }, [&] { Synchronise(practice, {}); }),
                  1.1);
}

} // namespace vellumo::bench
