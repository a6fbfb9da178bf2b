#include "simulator/siss/program/simulation_form.h"

#include "host/version.h"
#include "simulator/siss/messages.h"

#include <array>
#include <utility>

namespace vellumo::siss
{
namespace
{

constexpr std::array<int, 5> delays = {0, 500, 2000, 10000, 60000}; // milliseconds

// An element a line, so that a message can be read.
std::vector<std::string> Lines(const std::string& xml)
{
    std::vector<std::string> lines;
    std::string line;
    for (std::size_t i = 0; i < xml.size(); ++i)
    {
        line += xml[i];
        if (xml[i] == '>' && i + 1 < xml.size() && xml[i + 1] == '<')
        {
            lines.push_back(std::exchange(line, {}));
        }
    }
    lines.push_back(line);
    return lines;
}

} // namespace

SimulationForm::SimulationForm(Network& network, Choice choice)
    : Form("SIMULAZIONE del SISS")
    , m_network(network)
    , m_choice(std::move(choice))
    , m_simulation("SIMULAZIONE: nulla di quanto passa di qui arriva al SISS, e nessun codice è valido.")
    , m_meaning("Vellumo " + std::string(host::version) +
                ". Il simulatore risponde al posto del client SISS finché questa finestra è aperta.")
    , m_whom("Cittadino che l'operatore sceglie nella ricerca del SISS:")
    , m_session("&Sessione SISS attiva")
    , m_card("Carta &operatore inserita")
    , m_how("Come risponde alle prossime richieste:")
    , m_slow("Dopo millisecondi:")
    , m_calls("&Richieste")
    , m_texts("&Testo della richiesta e della risposta")
    , m_clear("&Vuota l'elenco")
    , m_close("&Chiudi")
{
    LayOut();
}

void SimulationForm::LayOut()
{
    m_simulation.strong = true;
    m_simulation.image = ui::Image::Warning;
    m_citizen.entries = {"nessuno"};
    m_citizen.index = 0;
    m_citizens = {""};
    for (const auto& [code, citizen] : m_network.People().All())
    {
        m_citizen.entries.push_back(citizen.Get("cognomeCittadino") + ' ' + citizen.Get("nomeCittadino") + ", " + code);
        m_citizens.push_back(code);
        if (code == m_choice.citizen)
        {
            m_citizen.index = static_cast<int>(m_citizens.size()) - 1;
        }
    }
    m_session.checked = m_choice.sessionActive;
    m_card.checked = m_choice.cardInserted;
    m_card.sameLine = true;
    for (const auto& manner : Manners())
    {
        m_manner.entries.emplace_back(manner.text);
    }
    m_manner.index = static_cast<int>(m_choice.manner);
    for (const int delay : delays)
    {
        m_delay.entries.push_back(std::to_string(delay));
    }
    m_delay.index = 0;
    m_calls.columns = {{"N", "N.", 700}, {"SERVIZIO", "Servizio", 6000}, {"ESITO", "Risposta", 4000}};
    m_calls.visibleRows = 7;
    m_texts.columns = {{"VERSO", "", 1200}, {"TESTO", "Messaggio", 9500}};
    m_texts.visibleRows = 9;
    m_close.sameLine = true;
    m_close.isCancel = true;
    m_controls = {&m_simulation, &m_meaning, &m_whom,  &m_citizen, &m_session, &m_card,  &m_how,
                  &m_manner,     &m_slow,    &m_delay, &m_calls,   &m_texts,   &m_clear, &m_close};
    m_designSize = {11600, 9000};
}

void SimulationForm::Load()
{
    Apply(m_choice, m_network);
    m_network.onCall = [this](const std::string& request) { Show(request, ""); };
    m_network.onReply = [this](const std::string& reply) { Show("", reply); };
}

// First the request, at once; its reply completes the row.
void SimulationForm::Show(const std::string& request, const std::string& reply)
{
    if (!request.empty())
    {
        m_shown.push_back({request, ""});
        m_calls.rows.push_back(
            {ui::Cell{std::to_string(m_shown.size())}, ui::Cell{ServiceOf(request)}, ui::Cell{"in corso"}});
    }
    else if (!m_shown.empty())
    {
        m_shown.back().reply = reply;
        m_calls.rows.back()[2].text = OutcomeOf(reply);
    }
    m_calls.selected = m_calls.rows.size() - 1;
    ShowTexts();
    RefreshView();
}

void SimulationForm::ShowTexts()
{
    m_texts.rows.clear();
    m_texts.selected.reset();
    if (!m_calls.selected || *m_calls.selected >= m_shown.size())
    {
        return;
    }
    const auto& exchange = m_shown[*m_calls.selected];
    for (const auto& [direction, text] :
         {std::pair("inviato", exchange.request), std::pair("ricevuto", exchange.reply)})
    {
        for (const auto& line : Lines(text))
        {
            m_texts.rows.push_back({ui::Cell{direction}, ui::Cell{line}});
        }
    }
}

void SimulationForm::Clicked(ui::Control& control)
{
    if (&control == &m_close)
    {
        Close();
        return;
    }
    if (&control == &m_clear)
    {
        m_shown.clear();
        m_calls.rows.clear();
        m_calls.selected.reset();
        ShowTexts();
    }
    m_choice.sessionActive = m_session.checked;
    m_choice.cardInserted = m_card.checked;
    Apply(m_choice, m_network);
}

void SimulationForm::Changed(ui::Control& control)
{
    if (&control == &m_calls)
    {
        ShowTexts();
        return;
    }
    m_choice.citizen = m_citizens.at(static_cast<std::size_t>(m_citizen.index));
    m_choice.manner = static_cast<std::size_t>(m_manner.index);
    m_choice.delayMilliseconds = delays.at(static_cast<std::size_t>(m_delay.index));
    Apply(m_choice, m_network);
}

} // namespace vellumo::siss
