#include "diagnosi/program/form_diagnosi.h"

#include "diagnosi/program/command.h"
#include "diagnosi/program/exchange_command.h"
#include "diagnosi/program/package_command.h"
#include "environment/files.h"
#include "host/version.h"

#include <algorithm>
#include <exception>
#include <sstream>
#include <utility>

namespace vellumo::diagnosi
{
namespace
{

constexpr const char* title = "Diagnosi di Vellumo";

ui::Image ImageOf(State state)
{
    return state == State::Error ? ui::Image::Error : state == State::Attention ? ui::Image::Warning : ui::Image::None;
}

std::string SummaryOf(const std::vector<Checked>& checked)
{
    const auto count = [&](State state)
    { return std::ranges::count_if(checked, [&](const Checked& one) { return one.finding.state == state; }); };
    const auto errors = count(State::Error);
    const auto attentions = count(State::Attention);
    if (errors + attentions == 0)
    {
        return "L'installazione è in ordine.";
    }
    return "Errori: " + std::to_string(errors) + ". Da guardare: " + std::to_string(attentions) + ".";
}

} // namespace

FormDiagnosi::FormDiagnosi(Machine& machine, ui::Desktop& desktop, OpenFile open)
    : Form(title)
    , m_machine(machine)
    , m_desktop(desktop)
    , m_open(std::move(open))
    , m_summary("Controllo in corso...")
    , m_version("Vellumo " + std::string(host::fullVersion) + ", programmi a " + std::to_string(8 * sizeof(void*)) +
                " bit")
    , m_checks("Con&trolli")
    , m_remedy("Che cosa &fare")
    , m_connection("&Database (connessione ODBC, facoltativa):")
    , m_again("&Ripeti i controlli")
    , m_ifAgain("Controlla di nuovo; con una connessione anche il database del programma.")
    , m_exchanges("Registro degli &scambi")
    , m_ifExchanges("Mostra nel browser gli scambi con il SISS degli ultimi " + std::to_string(usualDays) +
                    " giorni. La pagina contiene dati personali e sanitari.")
    , m_package("&Pacchetto per l'assistenza")
    , m_ifPackage("Mostra che cosa uscirebbe dallo studio, reso anonimo, e lo scrive solo dopo la conferma.")
    , m_days("&Giorni di registro da conservare:")
    , m_cleaning("P&ulizia del registro")
    , m_ifCleaning("Elenca gli scambi più vecchi, e li elimina solo dopo la conferma.")
    , m_close("&Chiudi")
    , m_ifClose("")
{
    LayOut();
}

void FormDiagnosi::LayOut()
{
    m_summary.strong = true;
    m_checks.columns = {{"STATO", "Esito", 1700}, {"CONTROLLO", "Controllo", 3300}, {"TROVATO", "Che cosa c'è", 6600}};
    m_checks.wraps = true;
    m_checks.visibleRows = 10;
    m_remedy.readOnly = true;
    m_remedy.lines = 3;
    m_days.value = "365";
    const std::pair<ui::Button*, ui::Label*> explained[] = {{&m_again, &m_ifAgain},
                                                            {&m_exchanges, &m_ifExchanges},
                                                            {&m_package, &m_ifPackage},
                                                            {&m_cleaning, &m_ifCleaning},
                                                            {&m_close, &m_ifClose}};
    for (const auto& [button, explanation] : explained)
    {
        explanation->sameLine = true;
        explanation->lines = 2;
        button->explanation = explanation;
    }
    m_ifClose.lines = 1;
    m_again.isDefault = true;
    m_close.isCancel = true;
    m_controls = {&m_summary,  &m_version,    &m_checks,      &m_remedy,  &m_connection, &m_again,
                  &m_ifAgain,  &m_exchanges,  &m_ifExchanges, &m_package, &m_ifPackage,  &m_days,
                  &m_cleaning, &m_ifCleaning, &m_close,       &m_ifClose};
    m_designSize = {11800, 9800};
    m_initialFocus = &m_checks;
}

void FormDiagnosi::Activated()
{
    if (!std::exchange(m_isChecked, true))
    {
        CheckAll();
    }
}

void FormDiagnosi::CheckAll()
{
    m_isBusy = true;
    m_machine.databases = {m_connection.value, ""};
    const auto tell = [this](const Check& check)
    {
        m_summary.text = std::string("Controllo in corso: ") + check.name;
        RefreshView();
    };
    const auto checked = RunChecks(m_machine, tell);
    m_isBusy = false;
    m_summary.text = SummaryOf(checked);
    Show(checked);
}

void FormDiagnosi::Show(const std::vector<Checked>& checked)
{
    m_checks.rows.clear();
    m_remedies.clear();
    m_checks.selected = checked.empty() ? std::nullopt : std::optional<std::size_t>(0);
    for (const auto& [check, finding] : checked)
    {
        const bool isFirst = finding.state != State::Ok && std::ranges::all_of(m_remedies, &std::string::empty);
        if (isFirst)
        {
            m_checks.selected = m_checks.rows.size();
        }
        m_checks.rows.push_back({ui::Cell{.text = NameOf(finding.state), .image = ImageOf(finding.state)},
                                 ui::Cell{.text = check->name, .strong = finding.state != State::Ok},
                                 ui::Cell{.text = WithWindowsLines(finding.found)}});
        m_remedies.push_back(WithWindowsLines(finding.remedy));
    }
    ShowRemedy();
    RefreshView();
}

void FormDiagnosi::ShowRemedy()
{
    const bool isOn = m_checks.selected && *m_checks.selected < m_remedies.size();
    const std::string remedy = isOn ? m_remedies[*m_checks.selected] : std::string();
    m_remedy.value = isOn && remedy.empty() ? "Nulla." : remedy;
}

void FormDiagnosi::Changed(ui::Control& control)
{
    if (&control == &m_checks)
    {
        ShowRemedy();
    }
}

void FormDiagnosi::Clicked(ui::Control& control)
{
    if (m_isBusy)
    {
        return;
    }
    try
    {
        Do(control);
    }
    catch (const std::exception& fault)
    {
        Tell({ExitCode::NotDone, fault.what()});
    }
}

void FormDiagnosi::Do(const ui::Control& control)
{
    if (&control == &m_again)
    {
        CheckAll();
    }
    else if (&control == &m_exchanges)
    {
        ShowExchanges();
    }
    else if (&control == &m_package)
    {
        PackForSupport();
    }
    else if (&control == &m_cleaning)
    {
        CleanUp();
    }
    else if (&control == &m_close)
    {
        Close();
    }
}

// Not while the checks run: they show what they find in this window.
void FormDiagnosi::FrameClosed()
{
    if (!m_isBusy)
    {
        Close();
    }
}

FormDiagnosi::Answer FormDiagnosi::Command(const std::vector<std::string>& words)
{
    std::ostringstream out;
    const ExitCode code = Run(words, m_machine, out);
    return {code, WithWindowsLines(out.str())};
}

void FormDiagnosi::Tell(const Answer& answer)
{
    const bool isBad = answer.code == ExitCode::NotDone || answer.code == ExitCode::Wrong;
    m_desktop.Show({answer.text, title, isBad ? ui::Icon::Critical : ui::Icon::Information});
}

void FormDiagnosi::ShowExchanges()
{
    const std::string page = TemporaryFile("registro scambi", ".html", m_machine.clock.Now());
    const auto answer = Command({"scambi", "--file", page});
    Tell(answer);
    if (answer.code != ExitCode::NotDone)
    {
        m_open(page);
    }
}

// What is shown is what is written: both are made from one package.
void FormDiagnosi::PackForSupport()
{
    const auto now = m_machine.clock.Now();
    const auto period = PeriodOf(Arguments({}, packageOptions, 0), now);
    const Package package = MakePackage(SourceOf(m_machine, period));
    const std::string page = TemporaryFile("anteprima pacchetto", ".html", now);
    const std::string archive = TemporaryFile("pacchetto assistenza", ".zip", now);
    if (!environment::WriteFile(page, package.page))
    {
        Tell({ExitCode::NotDone, "La pagina non può essere scritta: " + page + "."});
        return;
    }
    m_open(page);
    std::string masked = "Registro degli scambi " + PeriodText(period) + ". Mascherati nel pacchetto:";
    for (const auto& line : package.masked)
    {
        masked += "\r\n" + line;
    }
    const ui::Prompt question{
        masked,
        title,
        ui::Icon::Exclamation,
        ui::Buttons::YesNo,
        2,
        "\r\n\r\nNel browser si vede tutto ciò che uscirebbe dallo studio. Guardarlo, poi: scrivere il pacchetto?"};
    if (m_desktop.Show(question) == ui::Answer::Yes)
    {
        Tell(environment::WriteFile(archive, ZipOf(package))
                 ? Answer{ExitCode::Done, "Pacchetto scritto, da mandare all'assistenza:\r\n" + archive}
                 : Answer{ExitCode::NotDone, "Il pacchetto non può essere scritto: " + archive + "."});
    }
}

void FormDiagnosi::CleanUp()
{
    const std::vector<std::string> words{"pulizia", "--giorni", m_days.value};
    const auto list = Command(words);
    if (list.code != ExitCode::Attention)
    {
        Tell(list);
        return;
    }
    const ui::Prompt question{
        list.text,          title, ui::Icon::Exclamation,
        ui::Buttons::YesNo, 2,     "\r\n\r\nEliminare queste cartelle? Non si possono recuperare."};
    if (m_desktop.Show(question) == ui::Answer::Yes)
    {
        Tell(Command({words[0], words[1], words[2], "--elimina"}));
    }
}

} // namespace vellumo::diagnosi
