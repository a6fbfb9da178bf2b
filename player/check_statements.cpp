// What was sent, stored and logged.
#include "host/text.h"
#include "player/run.h"
#include "player/written.h"
#include "simulator/norda/ansi_file.h"

#include <algorithm>
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

void LookAtPath(Run& run, const Node& node)
{
    const auto text = [](const auto& found) { return found ? *found : std::string("no such node"); };
    const auto expected = node.Has("missing") ? std::nullopt : std::optional(node.Text("TEXT"));
    const auto seen = run.Open().requestBody.TextAt(node.Text("PATH"));
    if (expected != seen)
    {
        Expect(node.Text("PATH"), text(expected), text(seen));
        throw Differs(node.Text("PATH") + " is " + (seen ? "there" : "missing"));
    }
}

// The session as the host has it.
void LookAtSession(Run& run, const Node& node)
{
    const auto session = run.Session();
    if (!session)
    {
        throw Differs("the host has no session");
    }
    const auto& what = node.choice;
    if (what == "SenzaSISS" || what == "DaValidare")
    {
        Expect(what, node.Text("VALUE"),
               BooleanText(what == "SenzaSISS" ? session->SenzaSISS() : session->DaValidare()));
        return;
    }
    const auto options = run.GetStage().Provider().OptionsOf(*session);
    Expect(what, node.Text("VALUE"),
           std::to_string(what == "TipoRicetta" ? options.TipoRicetta : options.ModalitaStampa));
}

void LookAtResponses(Run& run, const Node& node)
{
    const auto session = run.Session();
    const auto kind = node.Has("drugs") ? host::kindDrugs : host::kindTests;
    Expect("the session holds", node.Text("N"), session ? std::to_string(session->ResponseCount(kind)) : "no session");
}

using Rows = std::vector<std::vector<std::string>>;

std::string Listed(const Rows& rows)
{
    std::string lines;
    for (const auto& row : rows)
    {
        lines += "\n    " + Joined(row, " | ");
    }
    return lines.empty() ? "no rows" : lines;
}

bool Fits(const std::string& expected, const std::string& seen)
{
    return expected == "*" || expected == seen;
}

void LookAtRows(Run& run, const Node& node)
{
    Rows seen;
    for (const auto result = run.GetStage().Database().Open(Joined(node.block, " ").insert(0, node.Text("SQL") + ' '));
         !result->IsAtEnd(); result->MoveNext())
    {
        auto& row = seen.emplace_back();
        for (std::size_t i = 0; i < result->ColumnCount(); ++i)
        {
            row.push_back(ValueText(result->Field(i)));
        }
    }
    Rows expected;
    for (const auto& line : node.below)
    {
        if (line.Keyword() == "row")
        {
            expected.push_back(line.Cells());
        }
    }
    const auto fits = [](const auto& left, const auto& right)
    { return std::equal(left.begin(), left.end(), right.begin(), right.end(), Fits); };
    if (!std::equal(expected.begin(), expected.end(), seen.begin(), seen.end(), fits))
    {
        throw Differs("rows\n  expected: " + Listed(expected) + "\n  seen:     " + Listed(seen));
    }
}

// `changed TABLE KEY COLUMN = TEXT | COLUMN = TEXT`, `added …`, `removed …`
RowChange ChangeOf(const Node& line)
{
    RowChange change;
    change.kind = line.Keyword() == "added"     ? RowChange::Kind::Added
                  : line.Keyword() == "removed" ? RowChange::Kind::Removed
                                                : RowChange::Kind::Changed;
    change.table = line.Text("TABLE");
    change.key = change.kind == RowChange::Kind::Added ? 0 : line.Number("N");
    for (const auto& cell : change.kind == RowChange::Kind::Removed ? std::vector<std::string>() : line.Cells())
    {
        const auto sign = cell.find(" =");
        if (sign == std::string::npos)
        {
            throw Differs("expected COLUMN = text in " + cell);
        }
        change.texts[cell.substr(0, sign)] = host::Trimmed(std::string_view(cell).substr(sign + 2));
    }
    return change;
}

bool Fits(const RowChange& expected, const RowChange& seen)
{
    const auto same = [](const auto& left, const auto& right)
    { return left.first == right.first && Fits(left.second, right.second); };
    return expected.kind == seen.kind && expected.table == seen.table &&
           (expected.kind == RowChange::Kind::Added || expected.key == seen.key) &&
           std::equal(expected.texts.begin(), expected.texts.end(), seen.texts.begin(), seen.texts.end(), same);
}

void LookAtChanges(Run& run, const Node& node)
{
    auto seen = run.Changes();
    for (const auto& line : node.below)
    {
        const auto expected = ChangeOf(line);
        const auto found =
            std::find_if(seen.begin(), seen.end(), [&](const RowChange& each) { return Fits(expected, each); });
        if (found == seen.end())
        {
            run.Report(line.place, "the database did not change so: " + expected.Text());
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
    std::vector<fs::path> folders;
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(run.GetStage().Practice().LogFolder(), none))
    {
        folders.push_back(entry.path());
    }
    std::sort(folders.begin(), folders.end());
    return folders;
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
    constexpr std::string_view form = "dddd-dd-dd dd.dd.dd"; // 2024-01-31 09.30.00
    const auto name = Name(folder);
    if (!std::equal(name.begin(), name.end(), form.begin(), form.end(),
                    [](char c, char kind) { return kind == 'd' ? c >= '0' && c <= '9' : c == kind; }))
    {
        run.Report(node.place, "the folder's name is " + Quoted(name));
    }
    std::set<std::string> others;
    for (const auto& entry : fs::directory_iterator(folder))
    {
        others.insert(Name(entry.path()));
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
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(run.GetStage().Practice().TraceFolder(), none))
    {
        text += Name(entry.path()).starts_with("tracce ") ? norda::ReadAnsiFile(entry.path()) : "";
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
    const auto seen = run.GetStage().GetTarget().Machine().MachineText(node.Text("KEY"), node.Text("NAME"));
    if (seen != (node.Has("missing") ? std::nullopt : std::optional(node.Text("TEXT"))))
    {
        throw Differs("the registry holds " + (seen ? Quoted(*seen) : "nothing"));
    }
}

constexpr auto nothing = [](Run&, const Node&) {}; // the line above it looks at this one

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
        {"request", "at PATH missing", "no such node below the operation element", LookAtPath},
        {"request", "at PATH 'TEXT'", "a text there", LookAtPath},
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
                    std::to_string(run.GetStage().CountStatements(node.Text("PART"))));
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
