// Reads scenario files. docs/scenarios.md describes the language.
#pragma once

#include "player/run.h"

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::player
{

struct Step
{
    Place place;
    std::function<void(Run&)> perform;
    bool isCheck = false; // looks at what is so after the calls; left out when a call was made to fail
};

// Whether a scenario is run again and again, the library's first, second, third … statement failing.
enum class Sweep
{
    None,
    WholeCall,    // all that the call stores, or nothing of it
    WholePatients // each patient as before or as after; here the program also ends at each statement
};

struct Scenario
{
    Place place;
    std::string title;
    std::vector<Step> steps;
    bool comparesDatabase = false;
    Sweep sweep = Sweep::None;
    // Names of the targets on which it runs; empty: all.
    std::vector<std::string> targets;
};

// Faults with SyntaxError. Files that the scenarios name lie beside `file`.
[[nodiscard]] std::vector<Scenario> ReadScenarios(const std::filesystem::path& file);

// The reader of one file. A line either stands alone or belongs to the line above it that opened something: the
// window of a call, the reply to be given, the rows of a query.
class Parser
{
public:
    explicit Parser(std::filesystem::path folder)
        : m_folder(std::move(folder))
    {
    }

    std::vector<Scenario> Read(std::vector<Line> lines);

private:
    using Reader = void (Parser::*)(Line&);
    struct Keyword
    {
        Reader read;
        bool belongs = false; // to what an earlier line opened; every other line closes that
    };
    static const std::map<std::string, Keyword>& Keywords();

    void ReadLine(Line& line);
    void AddStep(const Line& line, std::function<void(Run&)> perform, bool isCheck = false);
    void AddCheck(const Line& line, std::function<void(Run&)> perform) { AddStep(line, std::move(perform), true); }
    // Nothing is open any more.
    void Close();
    // What the line belongs to; a syntax error when nothing of the kind is open.
    template <class Open>
    static Open& Belongs(const Line& line, Open* open, const char* to)
    {
        if (open == nullptr)
        {
            line.Fail(std::string("this line belongs below ") + to);
        }
        return *open;
    }

    void ReadScenario(Line& line);
    void ReadSweep(Line& line);
    void ReadTargets(Line& line);
    void ReadTell(Line& line);

    // parse_setup.cpp: the world before and between the calls
    void ReadUser(Line& line);
    void ReadStudio(Line& line);
    void ReadHost(Line& line);
    void ReadSetting(Line& line);
    void ReadSql(Line& line);
    void ReadFile(Line& line);
    void ReadFolder(Line& line);
    void ReadRegistry(Line& line);
    void ReadRefuse(Line& line);
    void ReadFail(Line& line);
    void ReadPause(Line& line);
    void ReadPace(Line& line);
    void ReadGenerated(Line& line);

    // parse_siss.cpp: the network
    void ReadCitizen(Line& line);
    void ReadHas(Line& line);
    void ReadLacks(Line& line);
    void ReadExemption(Line& line);
    void ReadNoExemptions(Line& line);
    void ReadContact(Line& line);
    void ReadOperator(Line& line);
    void ReadSession(Line& line);
    void ReadCard(Line& line);
    void ReadBridge(Line& line);
    void ReadReply(Line& line);
    void ReadFinal(Line& line);
    void ReadException(Line& line);
    void ReadWarning(Line& line);

    // parse_call.cpp: the calls, their windows and what was sent
    void ReadCreate(Line& line);
    void ReadCall(Line& line);
    void ReadBox(Line& line);
    void ReadWindow(Line& line);
    void ReadDialog(Line& line);
    void ReadOpen(Line& line);
    void ReadWatch(Line& line);
    void ReadReturns(Line& line);
    void ReadGestito(Line& line);
    void ReadFaults(Line& line);

    // parse_checks.cpp: what is so afterwards
    void ReadRequests(Line& line);
    void ReadRequest(Line& line);
    void ReadShown(Line& line);
    void ReadAt(Line& line);
    void ReadOpened(Line& line);
    void ReadQuery(Line& line);
    void ReadRow(Line& line);
    void ReadNoRows(Line& line);
    void ReadDatabase(Line& line);
    void ReadChanged(Line& line);
    void ReadAdded(Line& line);
    void ReadRemoved(Line& line);
    void ReadLog(Line& line);
    void ReadHolds(Line& line);

    struct ReplyScript;
    struct RequestCheck;
    struct QueryCheck;
    struct ChangesCheck;
    struct LogCheck;

    std::filesystem::path m_folder;
    std::vector<Step> m_common; // of all scenarios of the file
    std::vector<Scenario> m_scenarios;

    // What is open.
    std::shared_ptr<Call> m_call;
    ExpectedWindow* m_window = nullptr;
    std::string m_citizen;
    std::shared_ptr<ReplyScript> m_reply;
    std::shared_ptr<RequestCheck> m_request;
    std::shared_ptr<QueryCheck> m_query;
    std::shared_ptr<ChangesCheck> m_changes;
    std::shared_ptr<LogCheck> m_log;
};

} // namespace vellumo::player
