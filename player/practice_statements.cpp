// The host and its installation, before and between the calls.
#include "host/fault.h"
#include "player/run.h"
#include "player/written.h"
#include "simulator/norda/ansi_file.h"
#include "simulator/norda/generated_data.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <thread>
#include <utility>

namespace vellumo::player
{
namespace
{

namespace fs = std::filesystem;

constexpr const char* nothingThere = "there is nothing to remove: is the name right?";

// A path below the practice's folder, written with "\" as the library writes its own.
fs::path PracticePath(Run& run, const Node& node)
{
    auto path = node.Text("PATH");
    std::replace(path.begin(), path.end(), '\\', '/');
    return run.GetStage().Practice().Folder() / fs::u8path(path);
}

void Remove(Run& run, const Node& node)
{
    if (fs::remove_all(PracticePath(run, node)) == 0)
    {
        run.HasNoEffect(node, nothingThere);
    }
}

void LogOn(Run& run, const Node& node)
{
    const auto user = norda::FindUser(run.GetStage().Database(), node.Text("NAME"));
    if (!user && node.Text("NAME") != "nobody")
    {
        throw Differs("the practice has no user " + node.Text("NAME"));
    }
    run.GetStage().Host().LogOn(user ? std::optional(user->id) : std::nullopt);
}

void SetSetting(Run& run, const Node& node)
{
    auto& database = run.GetStage().Database();
    const auto studio = std::to_string(norda::Practice::studio);
    const auto name = norda::Literal(database.GetDialect(), node.Text("NAME"));
    const auto rows = " FROM ImpostazioneStudio WHERE IDStudio = " + studio + " AND Nome = " + name;
    const bool known = !database.Single("SELECT Nome" + rows).IsNull();
    database.Execute("DELETE" + rows);
    if (!node.Has("missing"))
    {
        database.Execute("INSERT INTO ImpostazioneStudio (IDStudio, Nome, Valore) VALUES (" + studio + ", " + name +
                         ", " + norda::Literal(database.GetDialect(), node.Text("VALUE")) + ')');
    }
    else if (!known)
    {
        run.HasNoEffect(node, nothingThere);
    }
}

void RunSql(Run& run, const Node& node)
{
    const auto sql = node.Text("STATEMENT") + ' ' + Joined(node.block, " ");
    auto& database = run.GetStage().Database();
    host::Transaction transaction(database);
    for (int n = 1; n <= (node.Has("times") ? node.Number("N") : 1); ++n)
    {
        database.Execute(node.Has("times") ? Replaced(sql, "{n}", std::to_string(n)) : sql);
    }
    transaction.Commit();
}

void SetRegistryText(Run& run, const Node& node)
{
    const auto key = node.Text("KEY");
    const auto name = node.Text("NAME");
    const auto text = node.TextUnlessMissing("TEXT");
    if (node.Has("machine") && !text && !run.GetStage().Machine().MachineText(key, name))
    {
        run.HasNoEffect(node, nothingThere);
    }
    const auto set = node.Has("machine") ? &norda::Installation::SetMachineText : &norda::Installation::SetUserText;
    (run.GetStage().Machine().*set)(key, name, text);
}

void SetSaveHabit(Run& run, const Node& node)
{
    const auto habit = std::make_shared<norda::SaveHabit>();
    habit->refuses = node.Keyword() == "refuse";
    auto& objects = run.GetStage().Host().Objects();
    if (node.Has("certificate"))
    {
        objects.SetCertificateHabit(habit);
    }
    else if (node.Has("prescription"))
    {
        run.GetStage().Host().Prescriptions().SetHabit(habit);
    }
    else
    {
        objects.SetHabit(node.Has("patient") ? host::RecordKind::Patient
                         : node.Has("asl")   ? host::RecordKind::Asl
                                             : host::RecordKind::Specialist,
                         habit);
    }
    run.MustHaveEffect(node, "nothing of the kind was to be saved", [habit] { return habit->met != 0; });
}

void LimitSession(Run& run, const Node& node)
{
    if (!run.GetStage().Host().session)
    {
        throw Differs("no session is open");
    }
    const auto count = static_cast<std::size_t>(node.Number("N"));
    const auto met = node.Has("keeping") ? run.GetStage().Host().session->KeepAtMost(count)
                                         : run.GetStage().Host().session->GiveAtMost(count);
    run.MustHaveEffect(node, "no more were asked of it", [met] { return *met; });
}

void FailStatement(Run& run, const Node& node)
{
    static const std::map<std::string, norda::ServerFault> kinds = {
        {"", norda::ServerFault::Plain},        {"deadlock", norda::ServerFault::Deadlock},
        {"doomed", norda::ServerFault::Doomed}, {"timeout", norda::ServerFault::Timeout},
        {"lost", norda::ServerFault::Lost},     {"reported", norda::ServerFault::Reported}};
    const auto fault = run.GetStage().Host().AddFault(
        {node.Text("PART"), node.Has("N") ? node.Count("N") : 0,
         node.Has("TEXT") ? node.Text("TEXT") : "Errore provocato del database.", kinds.at(node.choice)});
    run.MustHaveEffect(node, "the library ran no such statement, so that none failed",
                       [fault] { return fault->fired; });
}

} // namespace

const Group practiceStatements = {
    "practice",
    Role::Step,
    {
        {"", "user NAME", "who is logged on: `bianchi` and `verdi` are doctors, `segreteria` is staff; or `nobody`",
         LogOn},
        {"", "studio N", "the practice's number that the host hands over",
         [](Run& run, const Node& node) { run.GetStage().Host().SetStudio(node.Number("N")); }},
        {"", "host strict",
         "it behaves as real hosts, ADO and SQL Server do wherever the library can notice; `--strict` makes it so for "
         "any file",
         [](Run& run, const Node&) { run.GetStage().Host().BecomeStrict(); }},
        {"", "host gives no Connection/LockSrv/Utils", "the host does not hand it over",
         [](Run& run, const Node& node) { run.GetStage().Host().Withhold(node.choice); }},
        {"", "host answers 0 without a row", "its look-ups do, instead of Null",
         [](Run& run, const Node&) { run.GetStage().Host().Utils().AnswerZeroWithoutRow(); }},
        {"", "setting NAME missing", "a setting of the practice, such as `CCEAbilitaLog True`", SetSetting},
        {"", "setting NAME VALUE", "", SetSetting},
        {"", "sql N times STATEMENT…", "changes the database; `{n}` counts the times", RunSql},
        {"", "sql STATEMENT…", "", RunSql},
        {"", "file 'PATH' missing", "removes a file below the practice's folder", Remove},
        {"", "file 'PATH' from 'FILE'", "puts a copy there of a file from beside the scenario, byte for byte",
         [](Run& run, const Node& node) {
             fs::copy_file(FileBeside(node, node.Text("FILE")), PracticePath(run, node),
                           fs::copy_options::overwrite_existing);
         }},
        {"", "file 'PATH'", "writes the text of its block there, as 8-bit text",
         [](Run& run, const Node& node) { norda::WriteAnsiFile(PracticePath(run, node), Joined(node.block, "\n")); }},
        {"", "folder 'PATH' missing", "removes a folder", Remove},
        {"", "registry machine KEY missing", "removes a registry key, so that nothing can be written there",
         [](Run& run, const Node& node) { run.GetStage().Machine().RemoveMachineKey(node.Text("KEY")); }},
        {"", "registry machine/user KEY NAME missing", "removes a registry value", SetRegistryText},
        {"", "registry machine/user KEY NAME TEXT", "sets a registry text", SetRegistryText},
        {"", "save patient/asl/specialist/prescription/certificate without a result",
         "the host's record is saved by a procedure, which answers nothing", SetSaveHabit},
        {"", "refuse to save patient/asl/specialist/prescription/certificate",
         "the host's record answers that it was not saved", SetSaveHabit},
        {"", "fail every 'PART' ['TEXT']", "each statement of the library that contains PART fails with the text",
         FailStatement},
        {"", "fail statement N 'PART' ['TEXT']", "the N-th of them does", FailStatement},
        {"", "fail statement N 'PART' as deadlock/doomed/timeout/lost/reported",
         "in the server's ways: the victim of a deadlock or an error that dooms its transaction, which the server "
         "takes back; too long a wait; a connection lost for good; a statement that happens and is reported as failed",
         FailStatement},
        {"", "fail session after keeping/giving N responses",
         "the session that the host keeps faults when it is to keep, or to give back, more than that", LimitSession},
        {"", "fail windows", "the system makes no window for the library any more; boxes go on",
         [](Run& run, const Node&) { run.GetStage().Screen().RefuseWindows(); }},
        {"", "pause N ms", "waits",
         [](Run&, const Node& node) { std::this_thread::sleep_for(std::chrono::milliseconds(node.Number("N"))); }},
        {"", "statements take N ms", "from now on each statement of the library waits that long, as on a busy server",
         [](Run& run, const Node& node)
         { run.GetStage().Host().SetPace(std::chrono::milliseconds(node.Number("N"))); }},
        {"", "generated list 'PATH' of N citizens", "a made-up patient list below the practice's folder",
         [](Run& run, const Node& node) { norda::WritePatientList(PracticePath(run, node), node.Count("N")); }},
        {"", "generated tables of N rows", "made-up regional tables",
         [](Run& run, const Node& node)
         { norda::WriteTables(run.GetStage().Practice().TablesFolder(), node.Count("N")); }},
    }};

} // namespace vellumo::player
