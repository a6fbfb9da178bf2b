#include "player/run.h"

#include "host/fault.h"
#include "player/apart.h"
#include "player/written.h"
#include "simulator/screen/controls.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace vellumo::player
{

namespace
{

// What the work faults with.
template <class Work>
std::optional<std::string> FaultOf(const Work& work)
{
    try
    {
        work();
        return std::nullopt;
    }
    catch (const host::Fault& fault)
    {
        return fault.Description();
    }
}

// The line says part of the fault's text; where it does not, or there is none, there must be no fault.
void ExpectFault(const Node* line, const std::optional<std::string>& seen, const std::string& otherwise)
{
    const bool isExpected = line != nullptr && line->Has("faults");
    if (isExpected != seen.has_value())
    {
        throw Differs(seen ? "there was a fault: " + Quoted(*seen) : "there was no fault: " + otherwise);
    }
    if (seen && seen->find(line->Text("PART")) == std::string::npos)
    {
        Expect("fault", line->Text("PART"), *seen);
    }
}

} // namespace

std::filesystem::path FileBeside(const Node& node, const std::string& name)
{
    return std::filesystem::path(node.place.file).parent_path() / std::filesystem::u8path(name);
}

Run::Run(norda::Practice practice, Options options, Narrator& narrator)
    : m_options(std::move(options))
    , m_narrator(narrator)
    , m_stage(std::make_unique<Stage>(std::move(practice), *this))
{
    if (m_options.strict)
    {
        m_stage->Host().BecomeStrict();
    }
    m_stage->Host().Rename(m_options.renamed);
    m_operator.emplace(*this, Node(), false); // no window is expected
    m_stage->Network().onCall = [this](const std::string& requestXml) { OnRequest(requestXml); };
    m_stage->Network().onReply = [this](const std::string& reply) { m_narrator.Received(reply); };
    m_stage->Host().SetStatementSeen([this] { OnStatement(); });
    if (m_options.failingStatement != 0)
    {
        // The strict host's server takes the whole transaction back, and what follows would be stored by itself.
        m_stage->Host().AddFault({"", m_options.failingStatement, "Errore provocato del database.",
                                  m_options.strict ? norda::ServerFault::Deadlock : norda::ServerFault::Plain});
    }
}

bool Run::Play(const Node& node)
{
    try
    {
        m_place = node.place;
        node.Perform(*this);
        return true;
    }
    catch (const Differs& difference)
    {
        Report(node.place, difference.what());
    }
    catch (const std::exception& fault)
    {
        Report(node.place, std::string("this could not be done: ") + fault.what());
    }
    return false;
}

void Run::PlayBelow(const Node& node)
{
    for (const auto& line : node.below)
    {
        Play(line);
    }
}

std::int32_t Run::PatientId(const std::string& codiceFiscale)
{
    auto& database = m_stage->Database();
    return database
        .Single("SELECT IDPaziente FROM Paziente WHERE CodiceFiscale = " +
                norda::Literal(database.GetDialect(), codiceFiscale))
        .ToInteger();
}

// "8, Anna Ferrari", "101, 2, farmaci" or "certificato 1, Elena Colombo"
std::string Run::Describe(const Node& operation)
{
    std::vector<std::string> words;
    for (std::size_t i = 0; i < m_current.arguments.size(); ++i)
    {
        const auto& [passing, value, record] = m_current.arguments[i];
        const bool isPatient = m_current.kind == 0 && !operation.Keyword().ends_with("Certificato");
        words.push_back(record ? "certificato " + operation.parts[i].Text("N") + NameOf(record->Get("IDPaziente"))
                               : value.ToText() + (isPatient ? NameOf(value) : ""));
    }
    if (m_current.kind == host::kindDrugs || m_current.kind == host::kindTests)
    {
        words.emplace_back(m_current.kind == host::kindDrugs ? "farmaci" : "accertamenti");
    }
    return Joined(words, ", ");
}

std::string Run::NameOf(const host::Value& patient)
{
    auto& database = m_stage->Database();
    const auto rows = database.Open("SELECT Nome, Cognome FROM Paziente WHERE IDPaziente = " +
                                    norda::Literal(database.GetDialect(), patient));
    return rows->IsAtEnd() ? "" : ", " + rows->Field("Nome").ToText() + ' ' + rows->Field("Cognome").ToText();
}

void Run::Remember()
{
    if (m_options.snapshots && !m_before)
    {
        m_before = norda::TakeSnapshot(m_stage->Database());
    }
}

std::vector<norda::RowChange> Run::Changes()
{
    return m_before ? norda::Compare(*m_before, Now()) : std::vector<norda::RowChange>();
}

void Run::Call(const Node& call)
{
    Remember();
    m_current = {};
    const auto& operation = call.parts.front();
    TakeArguments(operation);
    m_narrator.CallBegins(std::string(operation.Keyword()), m_narrator.IsHeard() ? Describe(operation) : "");
    const auto before = m_narrator.IsHeard() ? Now() : norda::Snapshot();
    const bool lenient = m_options.lenient || m_options.failingStatement != 0;
    const auto requests = m_shownAs.size();
    m_call = &call;
    m_operator.emplace(*this, call, lenient, m_answersByDefault);
    Make(operation);
    m_operator->End();
    m_call = nullptr;
    for (const auto& line : call.below)
    {
        const bool isOfTimer = line.Keyword() == "meanwhile";
        if (isOfTimer && !lenient && (line.Count("N") <= requests || line.Count("N") > m_shownAs.size()))
        {
            Report(line.place, "request " + line.Text("N") + " did not come");
        }
    }
    m_narrator.CallEnds(m_current.outcome,
                        m_narrator.IsHeard() ? norda::Compare(before, Now()) : std::vector<norda::RowChange>());
    m_outcomes.push_back(m_current.outcome);
    // With a fault on purpose what is returned depends on where it struck.
    if (!lenient)
    {
        Compare(call);
    }
}

void Run::CallMeanwhile(const Node& line)
{
    const auto outer = std::exchange(m_current, {});
    TakeArguments(line.parts.front());
    m_stage->Host().HandOver();
    Make(line.parts.front());
    const auto [returned, gestito, fault] = std::exchange(m_current, outer).outcome;
    ExpectFault(&line, fault, "the call returned " + returned);
    if (!fault)
    {
        Expect("returned value", line.Text("VALUE"), returned);
    }
}

void Run::TakeArguments(const Node& operation)
{
    for (const auto& part : operation.parts)
    {
        part.Perform(*this);
    }
}

void Run::Make(const Node& operation)
{
    if (const auto fault = FaultOf([&] { operation.Perform(*this); }))
    {
        m_current.outcome = {"", std::nullopt, fault};
    }
}

void Run::Compare(const Node& call)
{
    const auto& [returned, gestito, fault] = m_current.outcome;
    ExpectFault(FindLine(call.below, "faults"), fault, "the call returned " + returned);
    if (fault)
    {
        return;
    }
    const auto* const returns = FindLine(call.below, "returns");
    if (returns->Has("anything"))
    {
        return;
    }
    const auto id = returns->Has("patient") ? PatientId(returns->Text("CF")) : 0;
    const auto expected = returns->Has("patient") ? std::to_string(id) : returns->Text("VALUE");
    if (expected != returned || (returns->Has("patient") && id == 0))
    {
        Report(call.place, "returned value\n  expected: " + returns->behind +
                               (returns->Has("patient") ? " (" + expected + ")" : "") + "\n  seen:     " + returned);
    }
    if (const auto* const line = FindLine(call.below, "gestito"); line != nullptr && gestito)
    {
        Expect("Gestito", BooleanText(line->Has("True")), BooleanText(*gestito));
    }
}

void Run::CreateProvider(const Node& line)
{
    Remember();
    LetGo(line.place); // as when the host's program starts anew
    ExpectFault(&line, FaultOf([this] { static_cast<void>(m_stage->Host().Provider()); }), "the provider was created");
}

void Run::LetGo(const Place& place)
{
    if (!m_stage->Host().ReleaseProvider())
    {
        Report(place, "the library could not be unloaded after the provider was released: something still holds it");
    }
}

void Run::Finish(const Place& place)
{
    m_narrator.Logged(m_stage->Practice().LogFolder());
    LetGo(place);
    for (const auto& [line, hadEffect] : m_mustHaveEffect)
    {
        if (!hadEffect())
        {
            m_withoutEffect.push_back(line);
        }
    }
    if (const auto count = m_stage->Host().SecondConnections(); count != 0)
    {
        Report(place, "the library ran " + std::to_string(count) +
                          " statements while a result was open, each over a connection that ADO opened for it");
    }
}

void Run::OnScreen(screen::Window& window) noexcept
{
    try
    {
        m_operator->Work(window);
    }
    catch (const std::exception& fault)
    {
        host::PassOver([&] { Report(m_place, std::string("the player failed: ") + fault.what()); });
        host::PassOver([&] { ScriptedOperator::Dismiss(window); });
    }
}

void Run::OnBusy(screen::Window& window) noexcept
{
    host::PassOver([&] { m_operator->Watch(window); });
}

void Run::OnWindow(const screen::Window& window, bool isNew)
{
    m_narrator.WindowSeen(window, isNew);
    TakeScreenshot(window.Title());
    m_touched = false;
}

// A window that the operator has worked in is worth a picture before it goes.
bool Run::PlayIn(screen::Window& window, const Node& line)
{
    if (!line.statement->told.empty())
    {
        if (m_touched)
        {
            TakeScreenshot(window.Title());
        }
        m_touched = true;
        m_narrator.Did(line);
    }
    m_window = &window;
    return Play(line);
}

bool Run::IsSo(const Node& look, screen::Window& window)
{
    try
    {
        m_window = &window;
        look.Perform(*this);
        return true;
    }
    catch (const Differs&)
    {
        return false;
    }
}

// A call travels inside the wait window, which must be on screen and say so. Returns what operation it names.
std::string Run::LookAtWaitWindow()
{
    const auto* const window = m_stage->Screen().Topmost();
    if (window == nullptr || window->Kind() != screen::WindowKind::Form || window->Title() != "SISS Lombardia")
    {
        Report(m_place, "the request does not travel inside the wait window; on top is " +
                            (window != nullptr ? screen::Describe(*window) : "nothing"));
        return "";
    }
    auto labels = screen::CaptionsOf(window->All<ui::Label>());
    for (const std::string fixed : {"Attendere...", "Trasmissione/Ricezione dati in corso..."})
    {
        if (std::erase(labels, fixed) == 0)
        {
            Report(m_place, "the wait window does not show " + Quoted(fixed));
        }
    }
    TakeScreenshot(window->Title());
    return labels.empty() ? "" : labels.front();
}

void Run::OnRequest(const std::string& requestXml)
{
    m_shownAs.push_back(LookAtWaitWindow());
    m_narrator.Sent(requestXml, m_shownAs.back());
    if (m_call == nullptr)
    {
        return;
    }
    for (const auto& line : m_call->below)
    {
        if (line.Keyword() == "meanwhile" && line.Count("N") == m_shownAs.size())
        {
            Play(line); // nothing leaves it: this is inside a call of the library
        }
    }
}

// Where nothing else lets the target look at a window that is at work, a statement of its job does.
void Run::OnStatement()
{
    m_statementsAfter.resize(m_stage->Network().Exchanges().size(), m_stage->Host().Statements().size());
    if (m_stage->Host().Statements().size() == m_options.dyingStatement)
    {
        EndProcess(died);
    }
    if (auto* const window = m_stage->Screen().Topmost(); window != nullptr)
    {
        m_operator->Watch(*window);
    }
}

void Run::OnMilestone(const screen::Window& window)
{
    TakeScreenshot(window.Title());
    m_narrator.Progress(window);
}

void Run::TakeScreenshot(const std::string& title)
{
    if (!m_options.screenshots.empty())
    {
        std::filesystem::create_directories(m_options.screenshots);
        const auto number = std::to_string(++m_pictures + 100).substr(1);
        const auto file = m_options.screenshots / (number + '-' + FileName(title) + ".png");
        static_cast<void>(m_stage->Screen().TakePicture(file));
    }
}

} // namespace vellumo::player
