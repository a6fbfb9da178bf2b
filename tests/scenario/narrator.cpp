#include "tests/scenario/narrator.h"

#include "simulator/siss/xml_text.h"

#include <ostream>

namespace vellumo::scenario
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

std::string ButtonsOf(const Window& window)
{
    std::string text;
    for (const auto& button : window.Buttons())
    {
        text += text.empty() ? "" : ", ";
        text += button.standard ? NameOf(*button.standard) : button.caption;
        text += button.isDefault ? " (predefinito)" : "";
    }
    return text;
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

void Narrator::CallBegins(const std::string& operation, const std::string& argument)
{
    ++m_calls;
    m_out << "\n  Norda chiama " << operation << (argument.empty() ? "" : " (" + argument + ')') << '\n';
}

void Narrator::Sent(const std::string& requestXml, const std::string& shownAs)
{
    ++m_exchanges;
    m_out << "    inviato al SISS    " << ServiceOf(requestXml) << ", finestra d'attesa \"" << shownAs << "\"\n";
}

void Narrator::WindowSeen(const Window& window)
{
    ++m_windows;
    m_out << "    finestra           \"" << window.Title() << '"';
    if (window.Kind() == WindowKind::Box)
    {
        m_out << "\n                       " << Indented(window.Text(), "                       ");
    }
    for (std::size_t grid = 0; grid < window.Grids().size(); ++grid)
    {
        m_out << ", " << window.Grids()[grid].rowCount << " righe";
    }
    m_out << "\n                       pulsanti: " << ButtonsOf(window) << '\n';
}

void Narrator::CallEnds(const Outcome& outcome, const std::vector<RowChange>& stored)
{
    for (const auto& change : stored)
    {
        m_out << "    memorizzato        " << Told(change) << '\n';
    }
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

void Narrator::Logged(const std::vector<std::string>& files)
{
    for (const auto& file : files)
    {
        m_out << "    registro scambi    " << file << '\n';
    }
}

void Narrator::Summary(std::size_t scenarios, std::size_t failed)
{
    m_out << "\n== Riepilogo\n  scenari: " << scenarios << ", non riusciti: " << failed
          << "\n  chiamate di Norda: " << m_calls << "\n  richieste al SISS: " << m_exchanges
          << "\n  finestre mostrate: " << m_windows << " (oltre a quelle d'attesa)\n  righe memorizzate: " << m_rows
          << '\n';
}

} // namespace vellumo::scenario
