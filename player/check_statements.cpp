// What was sent, stored and logged.
#include "host/text.h"
#include "player/run.h"
#include "player/written.h"
#include "simulator/norda/ansi_file.h"

#include <algorithm>
#include <regex>
#include <set>

namespace vellumo::player
{
namespace
{

namespace fs = std::filesystem;

void LookAtRequest(Run& run, const Node& node)
{
    const auto& exchange = Numbered(run.GetStage().Network().Exchanges(), node.Count("N"), "request");
    const auto envelope = siss::ReadXml(exchange.request);
    const auto* const body = envelope.Find("SOAP-ENV:Body");
    if (body == nullptr || body->children.empty())
    {
        throw Differs("the request has no body");
    }
    run.Open().request = node.Count("N") - 1;
    run.Open().requestBody = body->children.front();
    run.PlayBelow(node);
    Expect("service", node.Text("SERVICE"), run.Open().requestBody.name);
}

void LookAtText(Run& run, const Node& node)
{
    Expect("the request", Joined(node.block, "\n"),
           run.GetStage().Network().Exchanges().at(run.Open().request).request);
}

// Of a text that may be missing, which is not one that says "nothing".
void ExpectText(const std::string& what, const Node& node, const std::optional<std::string>& seen)
{
    const auto shown = [](const auto& text) { return text ? Quoted(*text) : "nothing"; };
    Expect(what, shown(node.TextUnlessMissing("TEXT")), shown(seen));
}

void LookAtPath(Run& run, const Node& node)
{
    ExpectText(node.Text("PATH"), node, run.Open().requestBody.TextAt(node.Text("PATH")));
}

// The session as the host has it.
void LookAtSession(Run& run, const Node& node)
{
    const auto session = run.GetStage().Host().session;
    if (!session)
    {
        throw Differs("the host has no session");
    }
    const auto& what = node.choice;
    const auto options = [&] { return run.GetStage().Host().Provider().OptionsOf(*session); };
    Expect(what, node.Text("VALUE"),
           what == "SenzaSISS"     ? BooleanText(session->SenzaSISS())
           : what == "DaValidare"  ? BooleanText(session->DaValidare())
           : what == "TipoRicetta" ? std::to_string(options().TipoRicetta)
                                   : std::to_string(options().ModalitaStampa));
}

void LookAtResponses(Run& run, const Node& node)
{
    const auto session = run.GetStage().Host().session;
    const auto kind = node.Has("drugs") ? host::kindDrugs : host::kindTests;
    Expect("the session holds", node.Text("N"), session ? std::to_string(session->ResponseCount(kind)) : "no session");
}

using Table = std::vector<std::vector<std::string>>;

std::string Listed(const Table& rows)
{
    std::string lines;
    for (const auto& row : rows)
    {
        lines += "\n    " + Joined(row, " | ");
    }
    return lines.empty() ? "no rows" : lines;
}

// "*" stands for anything, also as the value of a column.
bool Fits(const std::string& expected, const std::string& seen)
{
    return expected == seen || expected == "*" ||
           (expected.ends_with(" = *") && seen.starts_with(expected.substr(0, expected.size() - 2)));
}

bool AllFit(const std::vector<std::string>& expected, const std::vector<std::string>& seen)
{
    return std::equal(expected.begin(), expected.end(), seen.begin(), seen.end(), Fits);
}

void LookAtRows(Run& run, const Node& node)
{
    Table seen;
    for (const auto result = run.GetStage().Database().Open(Joined(node.block, " ").insert(0, node.Text("SQL") + ' '));
         !result->IsAtEnd(); result->MoveNext())
    {
        auto& row = seen.emplace_back();
        for (std::size_t i = 0; i < result->ColumnCount(); ++i)
        {
            row.push_back(norda::ValueText(result->Field(i)));
        }
    }
    Table expected;
    for (const auto& line : node.below)
    {
        if (line.Keyword() == "row")
        {
            expected.push_back(line.Cells());
        }
    }
    if (!std::equal(expected.begin(), expected.end(), seen.begin(), seen.end(), AllFit))
    {
        throw Differs("rows\n  expected: " + Listed(expected) + "\n  seen:     " + Listed(seen));
    }
}

// As `norda::RowChange::Texts`.
std::vector<std::string> TextsOf(const Node& line)
{
    auto texts = line.Has("CELLS") ? line.Cells() : std::vector<std::string>();
    std::sort(texts.begin(), texts.end());
    texts.insert(texts.begin(),
                 std::string(line.Keyword()) + ' ' + line.Text("TABLE") + (line.Has("N") ? ' ' + line.Text("N") : ""));
    return texts;
}

void LookAtChanges(Run& run, const Node& node)
{
    auto seen = run.Changes();
    for (const auto& line : node.below)
    {
        const auto expected = TextsOf(line);
        const auto found = std::find_if(seen.begin(), seen.end(),
                                        [&](const norda::RowChange& each) { return AllFit(expected, each.Texts()); });
        if (found == seen.end())
        {
            run.Report(line.place, "the database did not change so: " + Joined(expected, " | "));
        }
        else
        {
            seen.erase(found);
        }
    }
    const bool unchanged = node.below.empty();
    for (const auto& change : seen)
    {
        if (unchanged && change.IsJournalLine())
        {
            continue;
        }
        run.Report(node.place, "the database changed and should not have: " + change.Text());
    }
}

std::vector<fs::path> LogFolders(Run& run)
{
    return EntriesOf(run.GetStage().Practice().LogFolder());
}

std::string Name(const fs::path& path)
{
    const auto name = path.filename().u8string();
    return {name.begin(), name.end()};
}

void LookAtLog(Run& run, const Node& node)
{
    const auto folders = LogFolders(run);
    const auto& folder = Numbered(folders, node.Count("N"), "log folder");
    static const std::regex form(R"(\d{4}-\d\d-\d\d \d\d\.\d\d\.\d\d)"); // 2024-01-31 09.30.00
    if (!std::regex_match(Name(folder), form))
    {
        run.Report(node.place, "the folder's name is " + Quoted(Name(folder)));
    }
    std::set<std::string> others;
    for (const auto& file : EntriesOf(folder))
    {
        others.insert(Name(file));
    }
    run.Open().logFolder = folder;
    run.PlayBelow(node);
    for (const auto& line : node.below)
    {
        others.erase(line.Text("FILE"));
    }
    for (const auto& other : others)
    {
        run.Report(node.place, "the folder also holds " + Quoted(other));
    }
}

void LookAtLogFile(Run& run, const Node& node)
{
    const auto file = run.Open().logFolder / fs::u8path(node.Text("FILE"));
    if (!fs::exists(file))
    {
        throw Differs("there is no file " + Quoted(node.Text("FILE")));
    }
    auto expected = node.Has("TEXT") ? node.Text("TEXT") : "";
    if (node.Has("request") || node.Has("reply"))
    {
        const auto& exchange = Numbered(run.GetStage().Network().Exchanges(), node.Count("N"), "exchange");
        expected = node.Has("reply") ? exchange.reply : exchange.request;
    }
    Expect(node.Text("FILE"), expected, norda::ReadAnsiFile(file));
}

// Files of lines that the library leaves for support staff.
std::string Traces(Run& run)
{
    std::string text;
    for (const auto& file : EntriesOf(run.GetStage().Practice().TraceFolder()))
    {
        text += Name(file).starts_with("tracce ") ? norda::ReadAnsiFile(file) : "";
    }
    return text;
}

void LookAtTraces(Run& run, const Node& node)
{
    const auto seen = Traces(run);
    if (node.Has("none") ? !seen.empty() : seen.find(node.Text("PART")) == std::string::npos)
    {
        throw Differs("the traces hold " + (seen.empty() ? "nothing" : Quoted(seen)));
    }
}

void LookAtRegistry(Run& run, const Node& node)
{
    ExpectText(node.Text("NAME"), node, run.GetStage().Machine().MachineText(node.Text("KEY"), node.Text("NAME")));
}

} // namespace

const Group checkStatements = {
    "checks",
    Role::Check,
    {
        {"", "requests N", "how many calls reached the bridge",
         [](Run& run, const Node& node) {
             Expect("number of requests", node.Text("N"), std::to_string(run.GetStage().Network().Exchanges().size()));
         }},
        {"", "request N is SERVICE", "its operation element", LookAtRequest},
        {"request", "shown as 'NAME'", "what the wait window said",
         [](Run& run, const Node& node)
         { Expect("the wait window said", node.Text("NAME"), run.ShownAs().at(run.Open().request)); }},
        {"request", "text", "its whole text is that of the block", LookAtText},
        {"request", "at PATH missing", "no such node below the operation element", LookAtPath},
        {"request", "at PATH 'TEXT'", "a text there; `x[2]` is the second `x`", LookAtPath},
        {"", "opened SenzaSISS/DaValidare/TipoRicetta/ModalitaStampa VALUE", "the session that the host keeps",
         LookAtSession},
        {"", "opened holds N drugs/tests", "", LookAtResponses},
        {"", "query SQL…", "what the database holds", LookAtRows},
        {"query", "row CELLS…", "a row, with `\\|` between its cells; `NULL` is null, `*` anything", nothing},
        {"query", "no rows", "", nothing},
        {"", "database unchanged", "nothing differs from before the first call, lines of the host's journal apart",
         LookAtChanges},
        {"", "database changes", "each row that differs stands below", LookAtChanges},
        {"database", "changed TABLE N CELLS…",
         "row with key N: `COLUMN = TEXT \\| COLUMN = TEXT`; `now` is a moment during the scenario", nothing},
        {"database", "added TABLE CELLS…", "a new row, with all columns that are not null", nothing},
        {"database", "removed TABLE N", "the row with that key is gone", nothing},
        {"", "statements with 'PART' N", "how many statements of the library contained PART",
         [](Run& run, const Node& node)
         {
             Expect("statements with " + Quoted(node.Text("PART")), node.Text("N"),
                    std::to_string(run.GetStage().Host().CountStatements(node.Text("PART"))));
         }},
        {"", "log folders N", "how many folders the exchange log has",
         [](Run& run, const Node& node)
         { Expect("log folders", node.Text("N"), std::to_string(LogFolders(run).size())); }},
        {"", "log folder N", "one of them; each of its files stands below", LookAtLog},
        {"log", "holds 'FILE' request N", "with what was sent, what came back, nothing, or a text", LookAtLogFile},
        {"log", "holds 'FILE' reply N", "", LookAtLogFile},
        {"log", "holds 'FILE' empty", "", LookAtLogFile},
        {"log", "holds 'FILE' 'TEXT'", "", LookAtLogFile},
        {"", "trace contains 'PART'", "the files `tracce …` of `SISS\\Tracce` contain that", LookAtTraces},
        {"", "trace none", "there are none, or they are empty", LookAtTraces},
        {"", "registry machine KEY NAME is missing", "a registry value", LookAtRegistry},
        {"", "registry machine KEY NAME is TEXT", "", LookAtRegistry},
    }};

} // namespace vellumo::player
