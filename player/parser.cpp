#include "player/parser.h"

#include <fstream>
#include <iterator>

namespace vellumo::player
{

const std::map<std::string, Parser::Keyword>& Parser::Keywords()
{
    static const std::map<std::string, Keyword> keywords = {
        {"scenario", {&Parser::ReadScenario}},
        {"sweep", {&Parser::ReadSweep}},
        {"only", {&Parser::ReadTargets}},
        {"tell", {&Parser::ReadTell}},
        // the host and its installation
        {"user", {&Parser::ReadUser}},
        {"studio", {&Parser::ReadStudio}},
        {"host", {&Parser::ReadHost}},
        {"setting", {&Parser::ReadSetting}},
        {"sql", {&Parser::ReadSql}},
        {"file", {&Parser::ReadFile}},
        {"folder", {&Parser::ReadFolder}},
        {"registry", {&Parser::ReadRegistry}},
        {"refuse", {&Parser::ReadRefuse}},
        {"fail", {&Parser::ReadFail}},
        {"pause", {&Parser::ReadPause}},
        {"statements", {&Parser::ReadPace}},
        {"generated", {&Parser::ReadGenerated}},
        // the network
        {"citizen", {&Parser::ReadCitizen}},
        {"has", {&Parser::ReadHas, true}},
        {"lacks", {&Parser::ReadLacks, true}},
        {"exemption", {&Parser::ReadExemption, true}},
        {"exempt", {&Parser::ReadNoExemptions, true}},
        {"contact", {&Parser::ReadContact}},
        {"operator", {&Parser::ReadOperator}},
        {"session", {&Parser::ReadSession}},
        {"card", {&Parser::ReadCard}},
        {"bridge", {&Parser::ReadBridge}},
        {"reply", {&Parser::ReadReply}},
        {"final", {&Parser::ReadFinal}},
        {"exception", {&Parser::ReadException, true}},
        {"warning", {&Parser::ReadWarning, true}},
        // the calls
        {"create", {&Parser::ReadCreate}},
        {"call", {&Parser::ReadCall}},
        {"box", {&Parser::ReadBox, true}},
        {"window", {&Parser::ReadWindow, true}},
        {"dialog", {&Parser::ReadDialog, true}},
        {"open", {&Parser::ReadOpen, true}},
        {"watch", {&Parser::ReadWatch, true}},
        {"returns", {&Parser::ReadReturns, true}},
        {"gestito", {&Parser::ReadGestito, true}},
        {"faults", {&Parser::ReadFaults, true}},
        // what is so afterwards
        {"requests", {&Parser::ReadRequests}},
        {"request", {&Parser::ReadRequest}},
        {"shown", {&Parser::ReadShown, true}},
        {"at", {&Parser::ReadAt, true}},
        {"opened", {&Parser::ReadOpened}},
        {"query", {&Parser::ReadQuery}},
        {"row", {&Parser::ReadRow, true}},
        {"no", {&Parser::ReadNoRows, true}},
        {"database", {&Parser::ReadDatabase}},
        {"changed", {&Parser::ReadChanged, true}},
        {"added", {&Parser::ReadAdded, true}},
        {"removed", {&Parser::ReadRemoved, true}},
        {"log", {&Parser::ReadLog}},
        {"holds", {&Parser::ReadHolds, true}},
    };
    return keywords;
}

std::vector<Scenario> Parser::Read(std::vector<Line> lines)
{
    for (auto& line : lines)
    {
        ReadLine(line);
    }
    Close();
    for (auto& scenario : m_scenarios)
    {
        scenario.steps.insert(scenario.steps.begin(), m_common.begin(), m_common.end());
    }
    return std::move(m_scenarios);
}

void Parser::ReadLine(Line& line)
{
    const auto word = line.Word("a keyword");
    if (m_window != nullptr)
    {
        if (auto item = ReadWindowLine(word, line))
        {
            m_window->items.push_back(std::move(*item));
            return;
        }
    }
    const auto keyword = Keywords().find(word);
    if (keyword == Keywords().end())
    {
        line.Fail("unknown keyword " + word);
    }
    if (!keyword->second.belongs)
    {
        Close();
    }
    (this->*keyword->second.read)(line);
    line.End();
}

void Parser::AddStep(const Line& line, std::function<void(Run&)> perform, bool isCheck)
{
    auto& steps = m_scenarios.empty() ? m_common : m_scenarios.back().steps;
    steps.push_back({line.Where(), std::move(perform), isCheck});
}

void Parser::Close()
{
    if (m_call && !m_call->returns && !m_call->fault)
    {
        throw SyntaxError(m_call->place, "the call needs a line \"returns\" or \"faults\" below it");
    }
    if (m_call && m_call->returns && m_call->operation == "IdentificaPaziente" && !m_call->gestito)
    {
        throw SyntaxError(m_call->place, "the call needs a line \"gestito\" below it");
    }
    m_call.reset();
    m_window = nullptr;
    m_citizen.clear();
    m_reply.reset();
    m_request.reset();
    m_query.reset();
    m_changes.reset();
    m_log.reset();
}

void Parser::ReadScenario(Line& line)
{
    Scenario scenario;
    scenario.place = line.Where();
    scenario.title = line.Rest();
    if (scenario.title.empty())
    {
        line.Fail("a scenario needs a title");
    }
    m_scenarios.push_back(std::move(scenario));
}

void Parser::ReadSweep(Line& line)
{
    const auto what = line.Rest();
    if (m_scenarios.empty() || (what != "database faults" && what != "whole patients"))
    {
        line.Fail("expected \"sweep database faults\" or \"sweep whole patients\" inside a scenario");
    }
    m_scenarios.back().sweep = what == "whole patients" ? Sweep::WholePatients : Sweep::WholeCall;
    m_scenarios.back().comparesDatabase = true;
}

void Parser::ReadTargets(Line& line)
{
    if (m_scenarios.empty() || !line.Take("on"))
    {
        line.Fail("expected \"only on\" and targets inside a scenario");
    }
    while (!line.AtEnd())
    {
        const auto target = line.Word("a target");
        if (target != "native" && target != "win64" && target != "win32")
        {
            line.Fail("unknown target " + target);
        }
        m_scenarios.back().targets.push_back(target);
    }
}

// For whoever listens with --tell.
void Parser::ReadTell(Line& line)
{
    AddStep(line, [text = line.Rest()](Run& run) { run.Tell(text); });
}

std::vector<Scenario> ReadScenarios(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    if (!in)
    {
        throw SyntaxError({file.string(), 0}, "the file cannot be read");
    }
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    auto scenarios = Parser(file.parent_path()).Read(ReadLines(file.string(), text));
    if (scenarios.empty())
    {
        throw SyntaxError({file.string(), 1}, "the file has no scenario");
    }
    return scenarios;
}

} // namespace vellumo::player
