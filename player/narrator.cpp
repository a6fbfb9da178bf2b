#include "player/narrator.h"

#include "simulator/siss/xml_text.h"

#include <cstdlib>
#include <map>
#include <ostream>
#include <set>
#include <utility>

namespace vellumo::player
{
namespace
{

std::string Indented(const std::string& text, const std::string& indent)
{
    std::string out;
    for (const char c : text)
    {
        out += c == '\r' ? "" : c == '\n' ? '\n' + indent : std::string(1, c);
    }
    return out;
}

std::string OnOneLine(std::string_view text)
{
    std::string line;
    for (const char c : text)
    {
        if (c != '\r')
        {
            line += c == '\n' ? ' ' : c;
        }
    }
    return line;
}

// As the operator reads them.
std::string Shown(const ButtonSeen& button)
{
    if (!button.standard)
    {
        return button.caption;
    }
    switch (*button.standard)
    {
    case ui::Answer::Cancel:
        return "Annulla";
    case ui::Answer::Retry:
        return "Riprova";
    case ui::Answer::Yes:
        return "Sì";
    default:
        return NameOf(*button.standard);
    }
}

std::string ButtonsOf(const Window& window)
{
    std::string text;
    for (const auto& button : window.Buttons())
    {
        text += text.empty() ? "" : ", ";
        text += Shown(button) + (button.isDefault ? " (predefinito)" : "");
    }
    return text;
}

// Short grids whole, of long ones only how many rows there are.
std::vector<std::string> RowsOf(const Window& window)
{
    constexpr std::size_t few = 4;
    std::vector<std::string> lines;
    const auto grids = window.Grids();
    for (std::size_t grid = 0; grid < grids.size(); ++grid)
    {
        if (grids[grid].rowCount > few)
        {
            lines.push_back(std::to_string(grids[grid].rowCount) + " righe");
            continue;
        }
        for (std::size_t row = 0; row < grids[grid].rowCount; ++row)
        {
            std::string line;
            for (std::size_t column = 0; column < grids[grid].columns.size(); ++column)
            {
                const auto cell = window.Cell(grid, row, column);
                line += column == 0 ? "" : " | ";
                line += cell.image == ui::Image::Error     ? "(errore)"
                        : cell.image == ui::Image::Warning ? "(avviso)"
                                                           : OnOneLine(cell.text);
            }
            lines.push_back(line);
        }
    }
    return lines;
}

// What is in a reply, in few words: its outcome, or that it is no reply at all.
std::string OutcomeOf(const std::string& reply)
{
    const auto text = [&](const std::string& element)
    {
        const auto begin = reply.find('<' + element + '>');
        const auto end = reply.find("</" + element + '>');
        return begin == std::string::npos || end == std::string::npos
                   ? std::string()
                   : reply.substr(begin + element.size() + 2, end - begin - element.size() - 2);
    };
    if (const auto code = text("codiceErrore"); !code.empty())
    {
        return "esito negativo " + code + ", " + text("descErrore");
    }
    if (const auto outcome = text("esitoServizio"); !outcome.empty())
    {
        return "esito " + outcome + ", " + std::to_string(reply.size()) + " byte";
    }
    if (const auto protocol = text("protocolloINPS"); !protocol.empty())
    {
        return "protocollo INPS " + protocol + ", " + std::to_string(reply.size()) + " byte";
    }
    return reply.find("Response>") != std::string::npos ? std::to_string(reply.size()) + " byte"
                                                        : '"' + reply.substr(0, 70) + '"';
}

std::string ServiceOf(const std::string& requestXml)
{
    const auto envelope = siss::ReadXml(requestXml);
    const auto* const body = envelope.Find("SOAP-ENV:Body");
    return body == nullptr || body->children.empty() ? "?" : body->children.front().name;
}

// What became of a row, in words.
std::string Told(const RowChange& change)
{
    std::string text = change.kind == RowChange::Kind::Added     ? "nuova riga in " + change.table
                       : change.kind == RowChange::Kind::Removed ? "eliminata da " + change.table + " la riga "
                                                                 : "aggiornata in " + change.table + " la riga ";
    text += change.kind == RowChange::Kind::Added ? "" : std::to_string(change.key);
    const char* between = ": ";
    for (const auto& [column, value] : change.texts)
    {
        text += between + column + " = " + (value == "now" ? "adesso" : value == "NULL" ? "(vuoto)" : value);
        between = ", ";
    }
    return text;
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

void Narrator::CallBegins(const std::string& operation, const std::string& argument)
{
    ++m_calls;
    m_out << "\n  Norda chiama " << operation << (argument.empty() ? "" : " (" + argument + ')') << '\n';
}

void Narrator::Sent(const std::string& requestXml, const std::string& shownAs)
{
    ++m_exchanges;
    m_out << "    inviato al SISS    " << ServiceOf(requestXml) << ", attesa \"" << shownAs << "\"\n";
}

void Narrator::Received(const std::string& reply)
{
    m_out << "    risposta del SISS  " << OutcomeOf(reply) << '\n';
}

void Narrator::WindowSeen(const Window& window, bool isNew)
{
    if (!isNew)
    {
        m_out << "    di nuovo           \"" << window.Title() << "\"\n";
        return;
    }
    ++m_windows;
    m_out << "    finestra           \"" << window.Title() << '"';
    if (window.Kind() == WindowKind::Box)
    {
        m_out << "\n                       " << Indented(window.Text(), "                       ");
    }
    for (const auto& label : window.Labels())
    {
        m_out << "\n                       " << Indented(label, "                       ");
    }
    for (const auto& line : RowsOf(window))
    {
        m_out << "\n                       " << line;
    }
    m_out << "\n                       pulsanti: " << ButtonsOf(window) << '\n';
}

void Narrator::Progress(const Window& window)
{
    const auto bars = window.ProgressBars();
    m_out << "    avanzamento        \"" << window.Title() << "\", " << static_cast<long>(bars.front().value) << " di "
          << static_cast<long>(bars.front().maximum);
    for (const auto& label : window.Labels())
    {
        m_out << "\n                       " << Indented(label, "                       ");
    }
    m_out << '\n';
}

void Narrator::Did(const std::string& action)
{
    m_out << "    l'operatore        " << action << '\n';
}

// Row by row as long as a person would read it, else how many of each table.
void Narrator::TellStored(const std::vector<RowChange>& stored)
{
    constexpr std::size_t readable = 15;
    if (stored.size() <= readable)
    {
        for (const auto& change : stored)
        {
            m_out << "    memorizzato        " << Told(change) << '\n';
        }
        return;
    }
    std::map<std::string, std::size_t> counts;
    for (const auto& change : stored)
    {
        ++counts[change.table + (change.kind == RowChange::Kind::Added     ? ", righe nuove: "
                                 : change.kind == RowChange::Kind::Removed ? ", righe eliminate: "
                                                                           : ", righe aggiornate: ")];
    }
    for (const auto& [what, count] : counts)
    {
        m_out << "    memorizzato        " << what << count << '\n';
    }
}

void Narrator::CallEnds(const Outcome& outcome, const std::vector<RowChange>& stored)
{
    TellStored(stored);
    m_rows += stored.size();
    if (outcome.fault)
    {
        m_out << "    errore             " << *outcome.fault << '\n';
        return;
    }
    m_out << "    risposta           " << outcome.returned;
    if (outcome.gestito)
    {
        m_out << ", Gestito " << (*outcome.gestito ? "True" : "False");
    }
    m_out << '\n';
}

void Narrator::Logged(const std::filesystem::path& logFolder)
{
    std::map<std::string, std::set<std::pair<int, std::string>>> folders; // by the number that a name begins with
    std::error_code none;
    for (const auto& folder : std::filesystem::directory_iterator(logFolder, none))
    {
        auto& files = folders[folder.path().filename().string()];
        for (const auto& file : std::filesystem::directory_iterator(folder.path()))
        {
            const auto name = file.path().filename().string();
            files.emplace(std::atoi(name.c_str()), name);
        }
    }
    for (const auto& [folder, files] : folders)
    {
        m_out << (folder == folders.begin()->first ? "\n  Registro degli scambi\n    " : "    ") << folder << '\n';
        for (const auto& [number, file] : files)
        {
            m_out << "      " << file << '\n';
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
