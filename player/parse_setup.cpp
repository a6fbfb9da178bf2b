// The lines that set up the host and its installation, before and between the calls.
#include "host/fault.h"
#include "player/cell.h"
#include "player/parser.h"
#include "simulator/norda/ansi_file.h"
#include "simulator/norda/generated_data.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace vellumo::player
{
namespace
{

// A path below the practice's folder, written with "\" as the library writes its own.
std::filesystem::path PracticeFile(Run& run, std::string path)
{
    std::replace(path.begin(), path.end(), '\\', '/');
    return run.GetStage().Practice().Folder() / std::filesystem::u8path(path);
}

std::string WithNumber(std::string text, int number)
{
    constexpr std::string_view placeholder = "{n}";
    for (auto at = text.find(placeholder); at != std::string::npos; at = text.find(placeholder))
    {
        text.replace(at, placeholder.size(), std::to_string(number));
    }
    return text;
}

} // namespace

void Parser::ReadUser(Line& line)
{
    AddStep(line,
            [place = line.Where(), name = line.Word("the user's name")](Run& run)
            {
                auto& stage = run.GetStage();
                if (name == "nobody")
                {
                    stage.LogOn(std::nullopt);
                    return;
                }
                const auto user = norda::FindUser(stage.Database(), name);
                if (!user)
                {
                    run.Report(place, "the practice has no user " + name);
                    return;
                }
                stage.LogOn(user->id);
            });
}

void Parser::ReadStudio(Line& line)
{
    AddStep(line, [studio = line.Number("the practice's number")](Run& run) { run.GetStage().SetStudio(studio); });
}

void Parser::ReadHost(Line& line)
{
    if (line.Take("answers"))
    {
        if (line.Rest() != "0 without a row")
        {
            line.Fail("expected \"host answers 0 without a row\"");
        }
        AddStep(line, [](Run& run) { run.GetStage().AnswerZeroWithoutRow(); });
        return;
    }
    if (!line.Take("gives") || !line.Take("no"))
    {
        line.Fail("expected \"host gives no Connection\", LockSrv or Utils, or \"host answers 0 without a row\"");
    }
    const auto part = line.Word("Connection, LockSrv or Utils");
    if (part != "Connection" && part != "LockSrv" && part != "Utils")
    {
        line.Fail("unknown part " + part);
    }
    AddStep(line, [part](Run& run) { run.GetStage().Withhold(part); });
}

void Parser::ReadSetting(Line& line)
{
    const auto name = line.Word("the setting's name");
    const bool missing = line.Take("missing");
    const auto value = missing ? host::Value() : host::Value(line.Word("the value"));
    AddStep(line,
            [=](Run& run)
            {
                norda::HostUtils utils(std::shared_ptr<norda::Database>(&run.GetStage().Database(), [](auto*) {}));
                const host::Parameters key{norda::Practice::studio, name};
                utils.Execute("DELETE FROM ImpostazioneStudio WHERE IDStudio = {0} AND Nome = {1}", key);
                if (!missing)
                {
                    utils.Execute("INSERT INTO ImpostazioneStudio (IDStudio, Nome, Valore) VALUES ({0}, {1}, {2})",
                                  {norda::Practice::studio, name, value});
                }
            });
}

// One statement; `sql 3000 times …` runs it that often with {n} counting from 1.
void Parser::ReadSql(Line& line)
{
    auto sql = line.Rest();
    int times = 1;
    const auto word = sql.find(" times ");
    const bool repeated = word != std::string::npos && sql.find_first_not_of("0123456789") == word;
    if (repeated)
    {
        times = std::stoi(sql);
        sql.erase(0, word + 7);
    }
    for (const auto& more : line.Block())
    {
        sql += ' ' + more;
    }
    AddStep(line,
            [=, place = line.Where()](Run& run)
            {
                auto& database = run.GetStage().Database();
                try
                {
                    host::Transaction transaction(database);
                    for (int n = 1; n <= times; ++n)
                    {
                        database.Execute(repeated ? WithNumber(sql, n) : sql);
                    }
                    transaction.Commit();
                }
                catch (const host::Fault& fault)
                {
                    run.Report(place, "the statement failed: " + fault.Description());
                }
            });
}

// `file "Norda\SISS\…"` with its text in a block, "missing", or "from" a file beside the scenario, byte for byte.
void Parser::ReadFile(Line& line)
{
    const auto path = line.Word("the path below the practice's folder");
    if (line.Take("missing"))
    {
        AddStep(line, [=](Run& run) { std::filesystem::remove(PracticeFile(run, path)); });
        return;
    }
    if (line.Take("from"))
    {
        const auto source = m_folder / std::filesystem::u8path(line.Word("the file"));
        if (!std::filesystem::exists(source))
        {
            line.Fail("there is no file " + source.string());
        }
        AddStep(line,
                [=](Run& run) {
                    std::filesystem::copy_file(source, PracticeFile(run, path),
                                               std::filesystem::copy_options::overwrite_existing);
                });
        return;
    }
    AddStep(line,
            [path, text = line.BlockText("\n")](Run& run) { norda::WriteAnsiFile(PracticeFile(run, path), text); });
}

void Parser::ReadFolder(Line& line)
{
    const auto path = line.Word("the path below the practice's folder");
    if (!line.Take("missing"))
    {
        line.Fail("expected \"missing\"");
    }
    AddStep(line, [=](Run& run) { std::filesystem::remove_all(PracticeFile(run, path)); });
}

void Parser::ReadRegistry(Line& line)
{
    const bool machine = line.Take("machine");
    if (!machine && !line.Take("user"))
    {
        line.Fail("expected machine or user");
    }
    const auto key = line.Word("the key");
    if (machine && line.Take("missing"))
    {
        AddStep(line, [=](Run& run) { run.GetStage().GetTarget().Machine().RemoveMachineKey(key); });
        return;
    }
    const auto name = line.Word("the value's name");
    if (machine && line.Take("is"))
    {
        const auto expected = line.Take("missing") ? std::nullopt : std::optional(line.Word("the text"));
        AddCheck(line,
                 [=, place = line.Where()](Run& run)
                 {
                     const auto seen = run.GetStage().GetTarget().Machine().MachineText(key, name);
                     if (seen != expected)
                     {
                         run.Report(place, "the registry holds " + (seen ? Quoted(*seen) : "nothing"));
                     }
                 });
        return;
    }
    const auto text = line.Take("missing") ? std::nullopt : std::optional(line.Word("the text"));
    AddStep(line,
            [=](Run& run)
            {
                auto& installation = run.GetStage().GetTarget().Machine();
                if (machine)
                {
                    installation.SetMachineText(key, name, text);
                }
                else
                {
                    installation.SetUserText(key, name, text);
                }
            });
}

void Parser::ReadRefuse(Line& line)
{
    line.Take("to");
    line.Take("save");
    if (line.Take("certificate"))
    {
        AddStep(line, [](Run& run) { run.GetStage().Objects().RefuseCertificateSaves(); });
        return;
    }
    static const std::map<std::string, host::RecordKind> kinds = {{"patient", host::RecordKind::Patient},
                                                                  {"asl", host::RecordKind::Asl},
                                                                  {"specialist", host::RecordKind::Specialist}};
    const auto name = line.Word("patient, asl, specialist, prescription or certificate");
    if (name == "prescription")
    {
        AddStep(line, [](Run& run) { run.GetStage().Prescriptions().RefuseSaves(); });
        return;
    }
    const auto kind = kinds.find(name);
    if (kind == kinds.end())
    {
        line.Fail("expected patient, asl, specialist, prescription or certificate");
    }
    AddStep(line, [kind = kind->second](Run& run) { run.GetStage().Objects().RefuseSaves(kind); });
}

// `fail statement 2 "UPDATE Paziente" "text"`, `fail every "SISS_Esenzione" "text"`.
void Parser::ReadFail(Line& line)
{
    StatementFault fault;
    if (!line.Take("every"))
    {
        line.Take("statement");
        const auto number = line.Number("which of the statements");
        if (number < 1)
        {
            line.Fail("statements count from 1");
        }
        fault.number = static_cast<std::size_t>(number);
    }
    fault.pattern = line.Word("part of the statement");
    fault.message = line.AtEnd() ? "Errore provocato del database." : line.Word("the error's text");
    AddStep(line, [fault](Run& run) { run.GetStage().AddFault(fault); });
}

void Parser::ReadPause(Line& line)
{
    const auto milliseconds = line.Number("milliseconds");
    line.Take("ms");
    AddStep(line, [=](Run&) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); });
}

// `statements take 20 ms`: each statement of the library waits that long, as on a busy server.
void Parser::ReadPace(Line& line)
{
    line.Take("take");
    const auto milliseconds = line.Number("milliseconds");
    line.Take("ms");
    AddStep(line, [=](Run& run) { run.GetStage().SetPace(std::chrono::milliseconds(milliseconds)); });
}

// `generated list "elenco.xml" of 300 citizens`, `generated tables of 60000 rows`.
void Parser::ReadGenerated(Line& line)
{
    const bool isList = line.Take("list");
    const auto path = isList ? line.Word("the path below the practice's folder") : std::string();
    if (!isList && !line.Take("tables"))
    {
        line.Fail("expected list or tables");
    }
    line.Take("of");
    const auto count = static_cast<std::size_t>(line.Number("how many"));
    line.Take(isList ? "citizens" : "rows");
    AddStep(line,
            [=](Run& run)
            {
                if (isList)
                {
                    norda::WritePatientList(PracticeFile(run, path), count);
                }
                else
                {
                    norda::WriteTables(run.GetStage().Practice().TablesFolder(), count);
                }
            });
}

} // namespace vellumo::player
