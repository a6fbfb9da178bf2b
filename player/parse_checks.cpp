// The lines that look at what was sent, stored and logged.
#include "host/fault.h"
#include "player/cell.h"
#include "player/parser.h"
#include "simulator/norda/ansi_file.h"

#include <algorithm>
#include <set>
#include <string_view>

namespace vellumo::player
{

struct Parser::RequestCheck
{
    Place place;
    std::size_t number = 0;
    std::string service;
    struct At
    {
        Place place;
        std::string path;
        std::optional<std::string> text; // empty: there is no such node
    };
    std::vector<At> texts;
    std::optional<std::pair<Place, std::string>> shown;

    void Perform(Run& run) const;
};

struct Parser::QueryCheck
{
    Place place;
    std::string sql;
    std::optional<std::vector<std::vector<std::string>>> rows;

    void Perform(Run& run) const;
};

struct Parser::ChangesCheck
{
    struct Expected
    {
        Place place;
        RowChange change;
    };
    Place place;
    std::vector<Expected> expected;

    void Perform(Run& run) const;
};

struct Parser::LogCheck
{
    Place place;
    std::size_t folder = 0;
    struct File
    {
        Place place;
        std::string name;
        bool isReply = false;
        std::optional<std::size_t> exchange; // whose text it holds
        std::string text;
    };
    std::vector<File> files;

    void Perform(Run& run) const;
};

namespace
{

std::vector<std::filesystem::path> LogFolders(Run& run)
{
    std::vector<std::filesystem::path> folders;
    const auto log = run.GetStage().Practice().LogFolder();
    if (std::filesystem::exists(log))
    {
        for (const auto& entry : std::filesystem::directory_iterator(log))
        {
            folders.push_back(entry.path());
        }
    }
    std::sort(folders.begin(), folders.end());
    return folders;
}

std::string Name(const std::filesystem::path& path)
{
    const auto name = path.filename().u8string();
    return {name.begin(), name.end()};
}

// "2024-01-31 09.30.00"
bool IsTimeStamp(const std::string& name)
{
    constexpr std::string_view form = "dddd-dd-dd dd.dd.dd";
    return std::equal(name.begin(), name.end(), form.begin(), form.end(),
                      [](char c, char kind) { return kind == 'd' ? c >= '0' && c <= '9' : c == kind; });
}

void Compare(Run& run, const Place& place, const std::string& what, const std::string& expected,
             const std::string& seen)
{
    if (expected != seen)
    {
        run.Report(place, what + "\n  expected: " + Quoted(expected) + "\n  seen:     " + Quoted(seen));
    }
}

// COLUMN = text | COLUMN = text
RowTexts ReadTexts(Line& line)
{
    RowTexts texts;
    for (const auto& cell : line.Cells())
    {
        const auto sign = cell.find(" =");
        if (sign == std::string::npos)
        {
            line.Fail("expected COLUMN = text in " + cell);
        }
        const auto begin = cell.find_first_not_of(' ', sign + 2);
        texts[cell.substr(0, sign)] = begin == std::string::npos ? "" : cell.substr(begin);
    }
    return texts;
}

bool SameTexts(const RowTexts& expected, const RowTexts& seen)
{
    return std::equal(expected.begin(), expected.end(), seen.begin(), seen.end(),
                      [](const auto& left, const auto& right)
                      { return left.first == right.first && (left.second == "*" || left.second == right.second); });
}

bool Fits(const RowChange& expected, const RowChange& seen)
{
    return expected.kind == seen.kind && expected.table == seen.table &&
           (expected.kind == RowChange::Kind::Added || expected.key == seen.key) &&
           SameTexts(expected.texts, seen.texts);
}

} // namespace

void Parser::ReadRequests(Line& line)
{
    const auto count = line.Number("how many");
    AddCheck(line,
             [=, place = line.Where()](Run& run)
             {
                 Compare(run, place, "number of requests", std::to_string(count),
                         std::to_string(run.GetStage().Network().Exchanges().size()));
             });
}

void Parser::ReadRequest(Line& line)
{
    m_request = std::make_shared<RequestCheck>();
    m_request->place = line.Where();
    m_request->number = static_cast<std::size_t>(line.Number("which request"));
    line.Take("is");
    m_request->service = line.Word("the service");
    AddCheck(line, [check = m_request](Run& run) { check->Perform(run); });
}

void Parser::ReadShown(Line& line)
{
    line.Take("as");
    Belongs(line, m_request.get(), "request").shown = {line.Where(), line.Word("what the wait window said")};
}

void Parser::ReadAt(Line& line)
{
    auto& texts = Belongs(line, m_request.get(), "request").texts;
    auto path = line.Word("the path");
    texts.push_back({line.Where(), path, line.Take("missing") ? std::nullopt : std::optional(line.Word("the text"))});
}

void Parser::RequestCheck::Perform(Run& run) const
{
    const auto& exchanges = run.GetStage().Network().Exchanges();
    if (number < 1 || number > exchanges.size())
    {
        run.Report(place, "there were only " + std::to_string(exchanges.size()) + " requests");
        return;
    }
    const auto envelope = siss::ReadXml(exchanges[number - 1].request);
    const auto* const body = envelope.Find("SOAP-ENV:Body");
    if (body == nullptr || body->children.empty())
    {
        run.Report(place, "the request has no body");
        return;
    }
    const auto& request = body->children.front();
    Compare(run, place, "service", service, request.name);
    if (shown)
    {
        Compare(run, shown->first, "the wait window said", shown->second, run.Travels().at(number - 1).shownAs);
    }
    for (const auto& at : texts)
    {
        const auto seen = request.TextAt(at.path);
        if (seen != at.text)
        {
            run.Report(at.place, at.path + "\n  expected: " + (at.text ? Quoted(*at.text) : "no such node") +
                                     "\n  seen:     " + (seen ? Quoted(*seen) : "no such node"));
        }
    }
}

// The session as the host has it: `opened SenzaSISS True`, `opened TipoRicetta 2`, `opened holds 3 drugs`.
void Parser::ReadOpened(Line& line)
{
    const auto what = line.Word("SenzaSISS, DaValidare, TipoRicetta, ModalitaStampa or holds");
    const auto expected = line.Word("the value");
    std::function<std::string(Run&, const norda::PrescriptionSession&)> read;
    const auto text = [](bool value) { return std::string(value ? "True" : "False"); };
    if (what == "SenzaSISS")
    {
        read = [=](Run&, const auto& session) { return text(session.SenzaSISS()); };
    }
    else if (what == "DaValidare")
    {
        read = [=](Run&, const auto& session) { return text(session.DaValidare()); };
    }
    else if (what == "TipoRicetta" || what == "ModalitaStampa")
    {
        read = [=](Run& run, const auto& session)
        {
            const auto options = run.GetStage().Provider().OptionsOf(session);
            return std::to_string(what == "TipoRicetta" ? options.TipoRicetta : options.ModalitaStampa);
        };
    }
    else if (what == "holds")
    {
        const auto kind = line.Take("drugs") ? host::kindDrugs : host::kindTests;
        if (kind == host::kindTests && !line.Take("tests"))
        {
            line.Fail("expected drugs or tests");
        }
        read = [=](Run&, const auto& session) { return std::to_string(session.ResponseCount(kind)); };
    }
    else
    {
        line.Fail("expected SenzaSISS, DaValidare, TipoRicetta, ModalitaStampa or holds");
    }
    AddCheck(line,
             [=, place = line.Where()](Run& run)
             {
                 const auto* const session = run.Session();
                 const auto seen = session == nullptr ? "no session" : read(run, *session);
                 if (seen != expected)
                 {
                     run.Report(place, what + " of the session\n  expected: " + expected + "\n  seen:     " + seen);
                 }
             });
}

void Parser::ReadQuery(Line& line)
{
    m_query = std::make_shared<QueryCheck>();
    m_query->place = line.Where();
    m_query->sql = line.Rest();
    for (const auto& more : line.Block())
    {
        m_query->sql += ' ' + more;
    }
    AddCheck(line, [check = m_query](Run& run) { check->Perform(run); });
}

void Parser::ReadRow(Line& line)
{
    auto& query = Belongs(line, m_query.get(), "query");
    if (!query.rows)
    {
        query.rows.emplace();
    }
    query.rows->push_back(line.Cells());
}

void Parser::ReadNoRows(Line& line)
{
    if (!line.Take("rows"))
    {
        line.Fail("expected \"no rows\"");
    }
    Belongs(line, m_query.get(), "query").rows.emplace();
}

void Parser::QueryCheck::Perform(Run& run) const
{
    const auto text = [](const std::vector<std::vector<std::string>>& all)
    {
        std::string lines;
        for (const auto& row : all)
        {
            lines += "\n    ";
            for (std::size_t i = 0; i < row.size(); ++i)
            {
                lines += (i == 0 ? "" : " | ") + row[i];
            }
        }
        return lines.empty() ? "no rows" : lines;
    };
    if (!rows)
    {
        run.Report(place, "the query needs lines \"row\", or \"no rows\", below it");
        return;
    }
    std::vector<std::vector<std::string>> seen;
    try
    {
        for (const auto result = run.GetStage().Database().Open(sql); !result->IsAtEnd(); result->MoveNext())
        {
            auto& row = seen.emplace_back();
            for (std::size_t i = 0; i < result->ColumnCount(); ++i)
            {
                row.push_back(ScenarioText(result->Field(i)));
            }
        }
    }
    catch (const host::Fault& fault)
    {
        run.Report(place, "the query failed: " + fault.Description());
        return;
    }
    const auto& expected = *rows;
    const bool same = std::equal(expected.begin(), expected.end(), seen.begin(), seen.end(),
                                 [](const auto& left, const auto& right)
                                 {
                                     return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                                                       [](const std::string& want, const std::string& got)
                                                       { return want == "*" || want == got; });
                                 });
    if (!same)
    {
        run.Report(place, "rows\n  expected: " + text(expected) + "\n  seen:     " + text(seen));
    }
}

// `database unchanged`, or `database changes` with a line for each row that differs from before the first call.
void Parser::ReadDatabase(Line& line)
{
    if (m_scenarios.empty())
    {
        line.Fail("this line belongs inside a scenario");
    }
    const bool unchanged = line.Take("unchanged");
    if (!unchanged && !line.Take("changes"))
    {
        line.Fail("expected unchanged or changes");
    }
    m_scenarios.back().comparesDatabase = true;
    const auto check = std::make_shared<ChangesCheck>();
    check->place = line.Where();
    m_changes = unchanged ? nullptr : check;
    AddCheck(line, [check](Run& run) { check->Perform(run); });
}

void Parser::ReadChanged(Line& line)
{
    auto& check = Belongs(line, m_changes.get(), "database changes");
    RowChange change{RowChange::Kind::Changed, line.Word("the table"), line.Number("the row's key"), {}};
    change.texts = ReadTexts(line);
    check.expected.push_back({line.Where(), std::move(change)});
}

void Parser::ReadAdded(Line& line)
{
    auto& check = Belongs(line, m_changes.get(), "database changes");
    RowChange change{RowChange::Kind::Added, line.Word("the table"), 0, {}};
    change.texts = ReadTexts(line);
    check.expected.push_back({line.Where(), std::move(change)});
}

void Parser::ReadRemoved(Line& line)
{
    auto& check = Belongs(line, m_changes.get(), "database changes");
    const auto table = line.Word("the table");
    check.expected.push_back({line.Where(), {RowChange::Kind::Removed, table, line.Number("the row's key"), {}}});
}

void Parser::ChangesCheck::Perform(Run& run) const
{
    auto seen = run.Changes();
    for (const auto& [at, change] : expected)
    {
        const auto found = std::find_if(seen.begin(), seen.end(),
                                        [&wanted = change](const RowChange& each) { return Fits(wanted, each); });
        if (found == seen.end())
        {
            run.Report(at, "the database did not change so: " + change.Text());
        }
        else
        {
            seen.erase(found);
        }
    }
    for (const auto& change : seen)
    {
        run.Report(place, "the database changed and should not have: " + change.Text());
    }
}

// `log folders 2`, or `log folder 1` with a line for each of its files.
void Parser::ReadLog(Line& line)
{
    if (line.Take("folders"))
    {
        const auto count = line.Number("how many");
        AddCheck(line,
                 [=, place = line.Where()](Run& run) {
                     Compare(run, place, "log folders", std::to_string(count), std::to_string(LogFolders(run).size()));
                 });
        return;
    }
    if (!line.Take("folder"))
    {
        line.Fail("expected folder or folders");
    }
    m_log = std::make_shared<LogCheck>();
    m_log->place = line.Where();
    m_log->folder = static_cast<std::size_t>(line.Number("which folder"));
    AddCheck(line, [check = m_log](Run& run) { check->Perform(run); });
}

void Parser::ReadHolds(Line& line)
{
    auto& files = Belongs(line, m_log.get(), "log folder").files;
    LogCheck::File file;
    file.place = line.Where();
    file.name = line.Word("the file's name");
    file.isReply = line.Take("reply");
    if (file.isReply || line.Take("request"))
    {
        file.exchange = static_cast<std::size_t>(line.Number("which exchange"));
    }
    else
    {
        file.text = line.Take("empty") ? "" : line.Word("its text");
    }
    files.push_back(std::move(file));
}

void Parser::LogCheck::Perform(Run& run) const
{
    const auto folders = LogFolders(run);
    if (folder < 1 || folder > folders.size())
    {
        run.Report(place, "there are only " + std::to_string(folders.size()) + " log folders");
        return;
    }
    const auto& path = folders[folder - 1];
    if (!IsTimeStamp(Name(path)))
    {
        run.Report(place, "the folder's name is " + Quoted(Name(path)));
    }
    std::set<std::string> others;
    for (const auto& entry : std::filesystem::directory_iterator(path))
    {
        others.insert(Name(entry.path()));
    }
    for (const auto& file : files)
    {
        if (others.erase(file.name) == 0)
        {
            run.Report(file.place, "there is no file " + Quoted(file.name));
            continue;
        }
        const auto& exchanges = run.GetStage().Network().Exchanges();
        const auto* const exchange = file.exchange && *file.exchange >= 1 && *file.exchange <= exchanges.size()
                                         ? &exchanges[*file.exchange - 1]
                                         : nullptr;
        if (file.exchange && exchange == nullptr)
        {
            run.Report(file.place, "there were only " + std::to_string(exchanges.size()) + " exchanges");
            continue;
        }
        const auto& expected = exchange == nullptr ? file.text : file.isReply ? exchange->reply : exchange->request;
        Compare(run, file.place, file.name, expected, norda::ReadAnsiFile(path / std::filesystem::u8path(file.name)));
    }
    for (const auto& other : others)
    {
        run.Report(place, "the folder also holds " + Quoted(other));
    }
}

} // namespace vellumo::player
