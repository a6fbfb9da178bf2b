#include "player/narrator.h"

#include "player/written.h"
#include "simulator/screen/controls.h"
#include "simulator/siss/messages.h"

#include <algorithm>
#include <map>
#include <utility>

namespace vellumo::player
{
namespace
{

// What scenarios write in English, as the operator reads it; buttons of a box are named after what they answer. Any
// other text as it is.
std::string InItalian(const std::string& text)
{
    static const std::map<std::string, std::string> words = {
        {"Cancel", "Annulla"}, {"Retry", "Riprova"},        {"Yes", "Sì"},
        {"Enter", "Invio"},    {"Escape", "Esc"},           {"Down", "Freccia giù"},
        {"End", "Fine"},       {"session", "una sessione"}, {"nothing", "niente"}};
    const auto found = words.find(text);
    return found == words.end() ? text : found->second;
}

std::string CaptionIn(ui::Button& button)
{
    return InItalian(screen::CaptionOf(button)) + (button.isDefault ? " (predefinito)" : "");
}

std::string Caption(const ui::Cell& cell)
{
    return cell.image == ui::Image::Error     ? "(errore)"
           : cell.image == ui::Image::Warning ? "(avviso)"
                                              : Replaced(cell.text, "\r\n", " ");
}

// The title with what is to be said of it, and the labels.
std::vector<std::string> LabelsOf(const screen::Window& window, const std::string& more)
{
    auto lines = screen::CaptionsOf(window.All<ui::Label>());
    lines.insert(lines.begin(), '"' + window.Title() + '"' + more);
    return lines;
}

// Short grids whole, of long ones only how many rows there are.
void AddRows(const screen::Window& window, std::vector<std::string>& lines)
{
    constexpr std::size_t few = 4;
    for (const auto* const grid : window.All<ui::Grid>())
    {
        const auto rows = grid->rows.size();
        if (rows > few)
        {
            lines.push_back(std::to_string(rows) + " righe");
        }
        for (std::size_t row = 0; row < (rows > few ? 0 : rows); ++row)
        {
            std::vector<std::string> cells;
            for (std::size_t column = 0; column < grid->columns.size(); ++column)
            {
                cells.push_back(Caption(window.Cell(*grid, row, column)));
            }
            lines.push_back(Joined(cells, " | "));
        }
    }
}

// What happened to how many rows of which table.
std::string KindInWords(const norda::RowChange& change)
{
    static const std::map<std::string, std::string> kinds = {
        {"added", "nuova riga in "}, {"removed", "eliminata una riga di "}, {"changed", "aggiornata una riga di "}};
    return kinds.at(change.kind) + change.row.table;
}

std::string InWords(const norda::RowChange& change)
{
    std::vector<std::string> texts;
    for (const auto& [column, value] : change.texts)
    {
        texts.push_back(column + " = " + (value == "now" ? "adesso" : value == "NULL" ? "(vuoto)" : value));
    }
    return KindInWords(change) + (change.kind == "added" ? "" : ", " + std::to_string(change.row.key)) +
           (texts.empty() ? "" : ": ") + Joined(texts, ", ");
}

} // namespace

void Narrator::Begin(const std::string& title)
{
    m_out << "\n== " << title << '\n';
}

void Narrator::Say(const std::string& text)
{
    m_out << "\n  -- " << text << '\n';
}

void Narrator::Say(const std::string& what, const std::string& text)
{
    const std::string indent(23, ' ');
    const auto label = "    " + what;
    m_out << label << indent.substr(std::min(label.size(), indent.size()))
          << Replaced(Replaced(text, "\r", ""), "\n", '\n' + indent) << '\n';
}

void Narrator::CallBegins(const std::string& operation, const std::string& argument)
{
    ++m_calls;
    m_out << "\n  Norda chiama " << operation << (argument.empty() ? "" : " (" + argument + ')') << '\n';
}

void Narrator::Sent(const std::string& requestXml, const std::string& shownAs)
{
    ++m_exchanges;
    Say("inviato al SISS", siss::ServiceOf(requestXml) + ", attesa \"" + shownAs + '"');
}

void Narrator::Received(const std::string& reply)
{
    Say("risposta del SISS", siss::OutcomeOf(reply));
}

void Narrator::WindowSeen(const screen::Window& window, bool isNew)
{
    if (!m_isHeard)
    {
        return; // reading a window takes time
    }
    if (!isNew)
    {
        Say("di nuovo", '"' + window.Title() + '"');
        return;
    }
    ++m_windows;
    auto lines = LabelsOf(window, "");
    if (window.Kind() == screen::WindowKind::Box)
    {
        lines.push_back(window.Text());
    }
    AddRows(window, lines);
    std::vector<std::string> buttons;
    for (auto* const button : window.All<ui::Button>())
    {
        buttons.push_back(CaptionIn(*button));
    }
    if (!buttons.empty())
    {
        lines.push_back("pulsanti: " + Joined(buttons, ", "));
    }
    Say("finestra", Joined(lines, "\n"));
}

void Narrator::Progress(const screen::Window& window)
{
    if (!m_isHeard)
    {
        return;
    }
    const auto* const bar = window.All<ui::ProgressBar>().front();
    const auto progress =
        ", " + std::to_string(static_cast<long>(bar->value)) + " di " + std::to_string(static_cast<long>(bar->maximum));
    const auto lines = LabelsOf(window, progress);
    Say("avanzamento", Joined(lines, "\n"));
}

void Narrator::Did(const Node& action)
{
    std::string text(action.statement->told);
    for (const auto& [name, written] : action.values)
    {
        text = Replaced(text, std::string("*").append(name), InItalian(written));
    }
    Say("l'operatore", text);
}

// Row by row as long as a person would read it, else how many of each table.
void Narrator::SayStored(const std::vector<norda::RowChange>& stored)
{
    constexpr std::size_t readable = 15;
    std::map<std::string, std::size_t> counts;
    for (const auto& change : stored)
    {
        if (stored.size() <= readable)
        {
            Say("memorizzato", InWords(change));
        }
        else
        {
            ++counts[KindInWords(change)];
        }
    }
    for (const auto& [what, count] : counts)
    {
        Say("memorizzato", what + ", volte: " + std::to_string(count));
    }
}

void Narrator::CallEnds(const Outcome& outcome, const std::vector<norda::RowChange>& stored)
{
    SayStored(stored);
    m_rows += stored.size();
    if (outcome.fault)
    {
        Say("errore", *outcome.fault);
        return;
    }
    Say("risposta",
        InItalian(outcome.returned) + (outcome.gestito ? ", Gestito " + BooleanText(*outcome.gestito) : ""));
}

void Narrator::Logged(const std::filesystem::path& logFolder)
{
    const auto folders = EntriesOf(logFolder);
    m_out << (folders.empty() ? "" : "\n  Registro degli scambi\n");
    for (const auto& folder : folders)
    {
        m_out << "    " << folder.filename().string() << '\n';
        for (const auto& file : EntriesOf(folder))
        {
            m_out << "      " << file.filename().string() << '\n';
        }
    }
}

void Narrator::Summary(std::size_t scenarios, std::size_t failed)
{
    m_out << "\n== Riepilogo\n  scenari: " << scenarios << ", non riusciti: " << failed
          << "\n  chiamate di Norda: " << m_calls << "\n  richieste al SISS: " << m_exchanges
          << "\n  finestre mostrate: " << m_windows << " (oltre a quelle d'attesa)\n  righe memorizzate: " << m_rows
          << '\n';
}

} // namespace vellumo::player
