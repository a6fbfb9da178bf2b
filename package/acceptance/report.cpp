#include "package/acceptance/report.h"

#include "package/acceptance/claims.h"
#include "simulator/siss/xml_text.h"

#include <algorithm>
#include <set>

namespace vellumo::acceptance
{
namespace
{

constexpr const char* head = R"(<!DOCTYPE html>
<html lang="it"><head><meta charset="utf-8"><title>Prova di accettazione di Vellumo</title><style>
body{font:15px/1.45 "Segoe UI",Tahoma,sans-serif;color:#1b1b1b;max-width:64em;margin:2em auto;padding:0 1em}
h1{font-size:1.6em}h2{font-size:1.2em;margin-top:2em}table{border-collapse:collapse;width:100%}
td,th{border:1px solid #c8c8c8;padding:.35em .6em;text-align:left;vertical-align:top}th{background:#f1f1f1}
.si{color:#0a5d00}.no{color:#a00000;font-weight:bold}.mai{color:#5a5a5a}
.esito{border-left:.5em solid;padding:.6em 1em;background:#f7f7f7}pre{white-space:pre-wrap;font-size:.9em}
</style></head><body>
<h1>Prova di accettazione di Vellumo</h1>
)";

std::string Marked(const char* mark, const std::string& text)
{
    return std::string("<span class=\"") + mark + "\">" + siss::Escape(text) + "</span>";
}

std::string Row(const std::string& first, const std::vector<std::string>& cells, const char* element = "td")
{
    const std::string open = std::string("<") + element + '>';
    const std::string close = std::string("</") + element + '>';
    std::string row = "<tr>" + open + first + close;
    for (const auto& cell : cells)
    {
        row.append(open).append(cell).append(close);
    }
    return row + "</tr>\n";
}

template <class Cell>
std::string RowOfEach(const std::string& first, const Acceptance& acceptance, Cell&& cell)
{
    std::vector<std::string> cells;
    for (const auto& bitness : acceptance.bitnesses)
    {
        cells.push_back(cell(bitness));
    }
    return Row(first, cells);
}

std::string Table(const std::string& first, const Acceptance& acceptance, const std::string& rows)
{
    std::vector<std::string> names;
    for (const auto& bitness : acceptance.bitnesses)
    {
        names.push_back(bitness.name);
    }
    return "<table>" + Row(first, names, "th") + rows + "</table>\n";
}

bool IsWine(const Acceptance& acceptance)
{
    return std::ranges::any_of(acceptance.bitnesses,
                               [](const BitnessOutcome& bitness) { return !bitness.Fact("Wine").empty(); });
}

std::string Verdict(const Acceptance& acceptance)
{
    std::size_t all = 0;
    std::size_t failed = 0;
    std::size_t broken = 0;
    for (const auto& bitness : acceptance.bitnesses)
    {
        for (const auto& file : bitness.files)
        {
            all += file.titles.size();
            failed += file.failed.size();
            broken += file.broken.empty() ? 0U : 1U;
        }
    }
    std::string text = std::to_string(all) + " scenari provati, " + std::to_string(failed) + " non reggono";
    text += broken == 0 ? "." : ", " + std::to_string(broken) + " file interrotti.";
    for (const auto& bitness : acceptance.bitnesses)
    {
        text += bitness.unplayable.empty() ? "" : " " + bitness.name + " non provato: " + bitness.unplayable;
    }
    std::string page = "<p class=\"esito\">" + Marked(Holds(acceptance) ? "si" : "no", text) + "<br>" +
                       siss::Escape(acceptance.when) + ", database " +
                       (acceptance.onServer ? "SQL Server" : "SQLite (attraverso ODBC)") +
                       (acceptance.whole ? "" : ", <b>solo una parte degli scenari</b>") + "</p>\n";
    if (IsWine(acceptance))
    {
        page += "<p>" +
                Marked("no", "Questa prova è stata fatta con Wine e non con Windows: di Windows non conferma nulla.") +
                "</p>\n";
    }
    return page;
}

std::string Facts(const Acceptance& acceptance)
{
    std::vector<std::string> names;
    for (const auto& bitness : acceptance.bitnesses)
    {
        for (const auto& [name, value] : bitness.facts)
        {
            if (std::ranges::find(names, name) == names.end())
            {
                names.push_back(name);
            }
        }
    }
    std::string rows;
    for (const auto& name : names)
    {
        rows += RowOfEach(siss::Escape(name), acceptance,
                          [&](const BitnessOutcome& bitness) { return siss::Escape(bitness.Fact(name)); });
    }
    return "<h2>Su che cosa</h2>\n" + Table("", acceptance, rows);
}

std::string ClaimCell(const Acceptance& acceptance, const BitnessOutcome& bitness, const Claim& claim)
{
    if (claim.ofServer && !acceptance.onServer)
    {
        return Marked("mai", "non provato: nessun SQL Server");
    }
    std::size_t played = 0;
    std::size_t failed = 0;
    for (const auto& file : bitness.files)
    {
        if (std::ranges::find(claim.files, file.file) != claim.files.end())
        {
            ++played;
            failed += file.failed.size() + (file.broken.empty() ? 0U : 1U);
        }
    }
    if (failed > 0)
    {
        return Marked("no", "smentito qui");
    }
    if (played < claim.files.size())
    {
        return Marked("mai", played == 0 ? "non provato" : "provato solo in parte");
    }
    return IsWine(acceptance) ? Marked("mai", "regge con Wine, e finora solo lì") : Marked("si", "confermato qui");
}

std::string ClaimTable(const Acceptance& acceptance)
{
    std::string rows;
    for (const auto& claim : Claims())
    {
        rows += RowOfEach(siss::Escape(claim.text), acceptance,
                          [&](const BitnessOutcome& bitness) { return ClaimCell(acceptance, bitness, claim); });
    }
    return "<h2>Che cosa finora poggiava solo su Wine e SQLite</h2>\n" + Table("", acceptance, rows);
}

std::string FileCell(const BitnessOutcome& bitness, const std::string& name)
{
    for (const auto& file : bitness.files)
    {
        if (file.file != name)
        {
            continue;
        }
        const auto count = std::to_string(file.titles.size());
        if (file.Holds())
        {
            return Marked("si", count + (file.titles.size() == 1 ? " scenario, regge" : " scenari, reggono"));
        }
        std::string cell = Marked("no", std::to_string(file.failed.size()) + " di " + count + " non reggono");
        cell += file.broken.empty() ? "" : "<br>" + Marked("no", file.broken);
        for (const auto& title : file.failed)
        {
            cell += "<br>" + siss::Escape(title);
        }
        return cell + "<details><summary>dettagli</summary><pre>" + siss::Escape(file.output) + "</pre></details>";
    }
    return Marked("mai", "non provato");
}

std::string Files(const Acceptance& acceptance)
{
    std::set<std::string> names;
    for (const auto& bitness : acceptance.bitnesses)
    {
        for (const auto& file : bitness.files)
        {
            names.insert(file.file);
        }
    }
    std::string rows;
    for (const auto& name : names)
    {
        rows += RowOfEach(siss::Escape(name), acceptance,
                          [&](const BitnessOutcome& bitness) { return FileCell(bitness, name); });
    }
    return "<h2>Scenari</h2>\n" + Table("", acceptance, rows);
}

} // namespace

bool Holds(const Acceptance& acceptance)
{
    std::size_t played = 0;
    bool holds = acceptance.installerHolds;
    for (const auto& bitness : acceptance.bitnesses)
    {
        played += bitness.files.size();
        holds = holds && bitness.unplayable.empty() &&
                std::ranges::all_of(bitness.files, [](const FileOutcome& file) { return file.Holds(); });
    }
    return holds && played > 0;
}

std::string Html(const Acceptance& acceptance)
{
    std::string page = head + Verdict(acceptance) + Facts(acceptance) + ClaimTable(acceptance);
    page += "<h2>Installazione senza diritti di amministratore</h2>\n<p>" +
            Marked(acceptance.installerHolds ? "si" : "no", acceptance.installer) + "</p>\n";
    page += Files(acceptance) + "<h2>Che cosa nemmeno questa prova mostra</h2>\n<ul>\n";
    for (const auto* const text : NotShown())
    {
        page += "<li>" + siss::Escape(text) + "</li>\n";
    }
    return page + "</ul>\n</body></html>\n";
}

} // namespace vellumo::acceptance
