#include "diagnosi/exchanges/exchange_page.h"

#include "diagnosi/exchanges/html.h"
#include "diagnosi/exchanges/outcome_words.h"
#include "diagnosi/exchanges/page_assets.h"
#include "host/text.h"
#include "host/version.h"
#include "service/siss_codes.h"

#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <set>
#include <utility>

namespace vellumo::diagnosi
{
namespace
{

constexpr std::size_t mostShown = 1'000'000; // characters of one message

// Says to the browser which style and script are ours; a message cannot know it.
std::string MakeNonce()
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::random_device random;
    std::string nonce;
    for (int i = 0; i < 32; ++i)
    {
        nonce += digits.at(random() % digits.size());
    }
    return nonce;
}

class PageWriter
{
public:
    PageWriter(const ExchangeRecord& record, const PageHead& head)
        : m_record(record)
        , m_head(head)
    {
        for (const Operation& operation : record.operations)
        {
            for (const Call& call : operation.calls)
            {
                Note(operation, call);
            }
        }
    }

    std::string Run()
    {
        WriteHead();
        WriteBar();
        m_out += "<main>\n";
        for (const Operation& operation : m_record.operations)
        {
            Write(operation);
        }
        if (m_record.operations.empty())
        {
            m_out += TextElement("p", "note", "In questo periodo il registro non ha operazioni.");
        }
        for (const auto& [title, text] : m_head.attachments)
        {
            m_out += "<details class=\"about\">" + TextElement("summary", "", title) + "<pre class=\"message\">\n" +
                     Escaped(text) + "</pre></details>\n";
        }
        m_out += "<footer>Vellumo " + Escaped(host::version) + "</footer>\n</main>\n<script nonce=\"" + m_nonce +
                 "\">" + std::string(pageScript) + "</script>\n</body>\n</html>\n";
        return std::move(m_out);
    }

private:
    void Note(const Operation& operation, const Call& call)
    {
        if (operation.kind == Operation::Kind::Prescriptions)
        {
            m_foldersWithPrescriptions.insert(call.folder);
        }
        std::set<std::string> codes = {call.outcome.code};
        for (const auto* list : {&call.outcome.exceptions, &call.outcome.warnings, &call.outcome.unconfirmed})
        {
            for (const auto& entry : *list)
            {
                codes.insert(entry->Code);
                codes.insert(entry->FieldCode);
            }
        }
        codes.erase("");
        for (const auto& code : codes)
        {
            ++m_codes[code];
        }
    }

    void WriteHead()
    {
        m_out += "<!DOCTYPE html>\n<html lang=\"it\">\n<head>\n<meta charset=\"utf-8\">\n"
                 "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'nonce-" +
                 m_nonce + "'; script-src 'nonce-" + m_nonce + "'; base-uri 'none'; form-action 'none'\">\n" +
                 "<meta name=\"viewport\" content=\"width=device-width\">\n" + TextElement("title", "", m_head.title) +
                 "\n<style nonce=\"" + m_nonce + "\">" + std::string(pageStyle) +
                 "</style>\n</head>\n<body>\n<header>\n" + TextElement("h1", "", m_head.title) +
                 "\n<p class=\"facts\">";
        for (const auto& fact : m_head.facts)
        {
            m_out += Escaped(fact) + "<br>";
        }
        m_out += Escaped(SummaryOf(m_record)) + "</p>\n";
        if (!m_head.banner.empty())
        {
            m_out += "<div class=\"banner\">";
            for (const auto& paragraph : m_head.banner)
            {
                m_out += TextElement("p", "", paragraph);
            }
            m_out += "</div>\n";
        }
        WriteCodes();
        WriteList("perche", "Perché una cartella può essere senza ricette", ReasonsForNoPrescriptions());
        if (!m_record.skipped.empty())
        {
            WriteList("saltati",
                      "File e cartelle che non sono del registro (" + std::to_string(m_record.skipped.size()) + ")",
                      m_record.skipped);
        }
        m_out += "</header>\n";
    }

    void WriteCodes()
    {
        if (m_codes.empty())
        {
            return;
        }
        m_out += "<details class=\"about\"><summary>Codici incontrati (" + std::to_string(m_codes.size()) +
                 ")</summary><table><tr><th>Codice</th><th>Chiamate</th><th>Significato</th><th>Chi può fare qualcosa"
                 "</th><th>Che cosa fare</th></tr>\n";
        for (const auto& [code, count] : m_codes)
        {
            const auto& known = service::ExplainSissCode(code);
            m_out += "<tr><td>" + TextElement("code", "", code) + "</td><td>" + std::to_string(count) + "</td>" +
                     TextElement("td", "", known.meaning) + TextElement("td", "", known.who) +
                     TextElement("td", "", known.remedy) + "</tr>\n";
        }
        m_out += "</table></details>\n";
    }

    void WriteList(std::string_view id, std::string_view title, const std::vector<std::string>& lines)
    {
        m_out.append("<details class=\"about\" id=\"").append(id).append("\">") +=
            TextElement("summary", "", title) + "<ul>";
        for (const auto& line : lines)
        {
            m_out += TextElement("li", "", line);
        }
        m_out += "</ul></details>\n";
    }

    void WriteBar()
    {
        m_out += "<div class=\"bar\"><div>"
                 "<input type=\"search\" id=\"search\" placeholder=\"Cerca nei messaggi\" aria-label=\"Cerca nei "
                 "messaggi\" spellcheck=\"false\">"
                 "<input type=\"search\" id=\"person\" list=\"persons\" placeholder=\"Codice fiscale\" "
                 "aria-label=\"Codice fiscale\" spellcheck=\"false\"><datalist id=\"persons\"></datalist>"
                 "<label><input type=\"checkbox\" id=\"bad\"> solo rifiutate o senza esito</label>"
                 "<button id=\"open\">Apri tutte</button><button id=\"close\">Chiudi tutte</button>"
                 "<button id=\"clear\">Togli i filtri</button>"
                 "<span id=\"count\" role=\"status\"></span></div></div>\n";
    }

    void Write(const Operation& operation)
    {
        const bool isSession = operation.kind == Operation::Kind::Prescriptions;
        m_out += isSession ? "<section class=\"operation prescriptions\">" : "<section class=\"operation\">";
        m_out += "<div class=\"head\">" + TextElement("h2", "", TitleOf(operation.kind)) +
                 TextElement("time", "", TimeText(isSession ? BeginOf(operation) : operation.time)) +
                 TextElement("span", "who", "") + TextElement("span", "where", WhereIs(operation)) + "</div>\n";
        for (const Call& call : operation.calls)
        {
            Write(call);
        }
        if (operation.calls.empty())
        {
            m_out += TextElement("p", "note", ReasonForNoCalls());
        }
        else if (!isSession && !m_foldersWithPrescriptions.contains(operation.folder))
        {
            m_out += "<p class=\"note\">In questa cartella non ci sono ricette (<a href=\"#perche\">perché?</a>).</p>";
        }
        m_out += "</section>\n";
    }

    static host::Date BeginOf(const Operation& session) { return session.calls.front().Time().value_or(session.time); }

    static std::string WhereIs(const Operation& operation)
    {
        std::string where = "cartella " + operation.folder;
        std::string last = operation.folder;
        for (const Call& call : operation.calls)
        {
            if (call.folder != last)
            {
                where += ", poi " + call.folder;
                last = call.folder;
            }
        }
        return where;
    }

    void Write(const Call& call)
    {
        const OutcomeWords words = WordsOf(call);
        const bool isBad = call.outcome.IsBad();
        const std::string_view weight = isBad ? "bad" : call.outcome.warnings.Count() > 0 ? "warn" : "";
        m_out.append("<details class=\"call ").append(weight).append("\"><summary>") +=
            TextElement("span", "number", std::to_string(call.number)) + ' ' +
            TextElement("span", "service", call.service) + ' ' +
            TextElement("span", "when", TimeText(call.Time().value_or(host::Date())).substr(call.Time() ? 11 : 0)) +
            ' ' + TextElement("span", "chip " + std::string(weight), words.chip) + ' ' +
            TextElement("span", "said", words.said) + "</summary><div class=\"inside\">";
        Explain(call, words, weight);
        m_out += "<div class=\"messages\">";
        WriteMessage("Richiesta", call.request, call.requestTime);
        WriteMessage("Risposta", call.reply, call.replyTime);
        m_out += "</div></div></details>\n";
    }

    void Explain(const Call& call, const OutcomeWords& words, std::string_view weight)
    {
        if (words.advice.empty() && weight.empty())
        {
            return;
        }
        m_out.append("<div class=\"explained ").append(weight).append("\">");
        for (const auto& paragraph : words.advice)
        {
            m_out += TextElement("p", "", paragraph);
        }
        const Outcome& outcome = call.outcome;
        m_explained.clear();
        if (!outcome.code.empty())
        {
            ExplainCode("Errore", outcome.code, outcome.kind == Outcome::Kind::NotXml ? "" : outcome.text);
        }
        ExplainAll("Dettaglio", outcome.exceptions);
        ExplainAll("Ricetta non confermata", outcome.unconfirmed);
        ExplainAll("Avviso", outcome.warnings);
        m_out += "</div>";
    }

    void ExplainAll(std::string_view what, const service::ServiceExceptions& entries)
    {
        for (const auto& entry : entries)
        {
            ExplainCode(what, entry->Code, entry->Message);
            if (!(entry->Field + entry->FieldCode + entry->FieldMessage).empty())
            {
                ExplainCode("Campo " + entry->Field, entry->FieldCode, entry->FieldMessage);
            }
        }
    }

    void ExplainCode(std::string_view what, const std::string& code, const std::string& text)
    {
        const auto& known = service::ExplainSissCode(code);
        m_out += "<p><b>" + Escaped(what) + "</b> " + TextElement("code", "", code) + ' ' +
                 Escaped(host::FirstCharacters(text, 2000)) + "</p>";
        if (!m_explained.insert(code).second)
        {
            return;
        }
        if (known.code.empty())
        {
            m_out += code.empty() ? "" : TextElement("p", "none", "Codice " + std::string(known.meaning) + ".");
            return;
        }
        m_out += "<dl>";
        for (const auto& [name, value] :
             std::array<std::pair<std::string_view, std::string_view>, 4>{{{"Significato", known.meaning},
                                                                           {"Chi può fare qualcosa", known.who},
                                                                           {"Che cosa fare", known.remedy},
                                                                           {"Vellumo", known.reaction}}})
        {
            m_out += TextElement("dt", "", name) + TextElement("dd", "", value);
        }
        m_out += "</dl>";
    }

    void WriteMessage(std::string_view title, const std::optional<std::string>& text,
                      const std::optional<host::Date>& time)
    {
        m_out += "<div class=\"side\"><div class=\"title\">" +
                 TextElement("h3", "", std::string(title) + (time ? ", file del " + TimeText(*time) : std::string()));
        if (!text || text->empty())
        {
            m_out += "</div>" + TextElement("p", "none", text ? "Il file è vuoto." : "Il file non c'è.") + "</div>";
            return;
        }
        m_out += "<button class=\"plain\" type=\"button\">Com&#39;è nel file</button></div>";
        const std::string shown = host::FirstCharacters(*text, mostShown);
        // A line break behind the tag is not part of the text.
        m_out += "<pre class=\"message\">\n" + Escaped(shown) + "</pre>";
        if (shown.size() < text->size())
        {
            m_out += TextElement("p", "none",
                                 "È mostrato solo l'inizio: in tutto sono " +
                                     std::to_string(host::CharacterCount(*text)) + " caratteri.");
        }
        m_out += "</div>";
    }

    const ExchangeRecord& m_record;
    const PageHead& m_head;
    std::string m_nonce = MakeNonce();
    std::set<std::string> m_foldersWithPrescriptions;
    std::map<std::string, std::size_t> m_codes;
    std::set<std::string> m_explained; // of the call that is being written
    std::string m_out;
};

} // namespace

std::string WriteExchangePage(const ExchangeRecord& record, const PageHead& head)
{
    return PageWriter(record, head).Run();
}

} // namespace vellumo::diagnosi
