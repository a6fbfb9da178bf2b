#include "diagnosi/program/exchange_command.h"

#include "diagnosi/exchanges/exchange_page.h"
#include "diagnosi/exchanges/outcome_words.h"
#include "environment/files.h"
#include "environment/siss_date_time.h"
#include "host/fault.h"
#include "host/version.h"

#include <filesystem>
#include <ostream>

namespace vellumo::diagnosi
{
namespace
{

host::Date DayOf(const std::string& text)
{
    const host::Date day = environment::ConvertSissDateTime(text);
    if (day.IsZero())
    {
        throw host::Fault("\"" + text + "\" non è un giorno: si scrive 22/11/2026.");
    }
    return day;
}

} // namespace

Period PeriodOf(const Arguments& arguments, host::Date today)
{
    const auto first = arguments.Value("--dal");
    const auto last = arguments.Value("--al");
    Period period;
    if (first || last)
    {
        period.firstDay = first ? DayOf(*first) : host::Date();
        period.lastDay = last ? DayOf(*last) : host::Date();
    }
    else
    {
        period.firstDay = host::Date::FromOle(today.DayNumber() + 1 - arguments.Number("--giorni", usualDays));
    }
    return period;
}

std::string PeriodText(const Period& period)
{
    const std::string from = period.firstDay.IsZero() ? "dall'inizio" : "dal " + period.firstDay.ToDayText();
    return from + (period.lastDay.IsZero() ? "" : " al " + period.lastDay.ToDayText());
}

std::string TemporaryFile(std::string_view name, std::string_view ending, host::Date time)
{
    const auto folder = std::filesystem::temp_directory_path().u8string();
    return environment::JoinPath(std::string(folder.begin(), folder.end()),
                                 std::string(name) + ' ' + environment::Stamp(time) + std::string(ending));
}

ExitCode RunExchanges(const Task& task)
{
    const host::Date now = task.machine.clock.Now();
    const auto& operands = task.arguments.Operands();
    const std::string folder = operands.empty() ? LogFolder(task.machine) : operands.front();
    if (!environment::FolderExists(folder))
    {
        throw host::Fault("La cartella del registro non c'è: " + folder +
                          ". Si crea da sola alla prima operazione con le impostazioni CCEAbilitato e CCEAbilitaLog "
                          "accese. Per leggere un'altra cartella: VellumoDiagnosi scambi CARTELLA.");
    }
    const Period period = PeriodOf(task.arguments, now);
    const auto record = ReadExchanges(folder, period);
    PageHead head;
    head.facts = {"Cartella " + folder, "Periodo " + PeriodText(period) + ", pagina del " + TimeText(now)};
    const std::string file = task.arguments.Value("--file").value_or(TemporaryFile("registro scambi", ".html", now));
    if (!environment::WriteFile(file, WriteExchangePage(record, head)))
    {
        throw host::Fault("La pagina non può essere scritta: " + file + ".");
    }
    const Tally tally = TallyOf(record);
    task.out << "Registro degli scambi " << PeriodText(period) << ": " << SummaryOf(record) << ".\n"
             << (tally.calls == 0 ? "Nel registro non ci sono chiamate: guardare il giornale e SISS\\Tracce.\n" : "")
             << "La pagina contiene dati personali e sanitari: cancellarla quando non serve più.\n"
             << file << '\n';
    return tally.bad > 0 || tally.calls == 0 ? ExitCode::Attention : ExitCode::Done;
}

} // namespace vellumo::diagnosi
