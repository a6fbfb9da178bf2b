#include "player/run.h"

#include "host/fault.h"
#include "player/cell.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace vellumo::player
{
namespace
{

std::string Text(bool value)
{
    return value ? "True" : "False";
}

std::string FileName(const std::string& title)
{
    std::string name;
    for (const char c : title)
    {
        name += std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '-';
    }
    return name;
}

} // namespace

Run::Run(const std::filesystem::path& model, const std::filesystem::path& folder, Options options, Narrator* narrator)
    : m_options(std::move(options))
    , m_narrator(narrator)
    , m_watch([this](const Place& place, const std::string& what) { Report(place, what); },
              [this](const Window& window) { OnProgress(window); })
    , m_player([this](const Place& place, const std::string& what) { Report(place, what); },
               [this](const Window& window, bool isNew) { OnWindow(window, isNew); },
               [this](const Window& window, const std::string& told) { OnAction(window, told); },
               [this](const Window& window) { m_watch.Look(window); })
    , m_stage(std::make_unique<Stage>(model, folder, m_player))
{
    m_stage->Network().onCall = [this](const std::string& requestXml) { OnRequest(requestXml); };
    m_stage->Network().onReply = [this](const std::string& reply)
    {
        if (m_narrator != nullptr)
        {
            m_narrator->Received(reply);
        }
    };
    m_stage->SetStatementSeen([this] { OnStatement(); });
    if (m_options.failingStatement != 0)
    {
        m_stage->AddFault({"", m_options.failingStatement, "Errore provocato del database.", 0});
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
std::string Run::Describe(const Call& call, const Asked& asked)
{
    const auto first = asked.argument.value.ToText();
    const auto kind = asked.kind == host::kindDrugs   ? ", farmaci"
                      : asked.kind == host::kindTests ? ", accertamenti"
                                                      : "";
    switch (FindOperation(call.operation)->arguments)
    {
    case Arguments::None:
        break;
    case Arguments::Form:
        return first + kind;
    case Arguments::Prescription:
        return first + ", " + asked.second.value.ToText() + kind;
    case Arguments::Patient:
        return first + NameOf(asked.argument.value);
    case Arguments::Certificate:
        return call.argument.certificate == 0
                   ? first
                   : "certificato " + std::to_string(call.argument.certificate) +
                         NameOf(m_stage->Database().Single(
                             "SELECT IDPaziente FROM CertificatoMalattia WHERE IDCertificatoMalattia = " +
                             std::to_string(call.argument.certificate)));
    }
    return "";
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
        m_before = TakeSnapshot(m_stage->Database());
    }
}

std::vector<RowChange> Run::Changes()
{
    return m_before ? player::Compare(*m_before, TakeSnapshot(m_stage->Database())) : std::vector<RowChange>();
}

void Run::Perform(const Call& call)
{
    Remember();
    m_place = call.place;
    Asked asked{m_stage->Provider(),
                m_session,
                {call.argument.passing, call.argument.value},
                {call.second.passing, call.second.value},
                call.kind};
    if (!call.argument.patient.empty())
    {
        asked.argument.value = PatientId(call.argument.patient);
        if (asked.argument.value.ToInteger() == 0)
        {
            Report(call.place, "the practice has no patient " + call.argument.patient);
            return;
        }
    }
    if (m_narrator != nullptr)
    {
        m_narrator->CallBegins(call.operation, Describe(call, asked));
    }
    const auto snapshot = m_narrator != nullptr ? TakeSnapshot(m_stage->Database()) : Snapshot();
    *call.folder = m_stage->Practice().Folder();
    m_watch.Begin(call.place, call.watched, m_options.failingStatement != 0);
    m_player.Begin(call.place, call.windows, m_options.failingStatement != 0);
    Outcome outcome;
    try
    {
        if (call.argument.certificate != 0)
        {
            asked.argument.record = m_stage->LoadCertificate(call.argument.certificate);
        }
        FindOperation(call.operation)->perform(asked, outcome);
    }
    catch (const host::Fault& fault)
    {
        outcome = {"", std::nullopt, fault.Description()};
    }
    m_player.End();
    m_watch.End();
    if (m_narrator != nullptr)
    {
        m_narrator->CallEnds(outcome, player::Compare(snapshot, TakeSnapshot(m_stage->Database())));
    }
    // With a fault on purpose the answer depends on where it struck.
    if (m_options.failingStatement == 0)
    {
        Compare(call, outcome);
    }
}

void Run::Compare(const Call& call, const Outcome& outcome)
{
    if (outcome.fault.has_value() != call.fault.has_value())
    {
        Report(call.place, outcome.fault ? "the call faulted: " + Quoted(*outcome.fault)
                                         : "the call did not fault, it returned " + outcome.returned);
        return;
    }
    if (outcome.fault)
    {
        if (outcome.fault->find(*call.fault) == std::string::npos)
        {
            Report(call.place, "fault\n  expected: " + Quoted(*call.fault) + "\n  seen:     " + Quoted(*outcome.fault));
        }
        return;
    }
    auto expected = *call.returns;
    constexpr std::string_view patient = "patient ";
    if (expected.substr(0, patient.size()) == patient)
    {
        expected = std::to_string(PatientId(expected.substr(patient.size())));
    }
    if (expected != outcome.returned || (expected == "0") != (*call.returns == "0"))
    {
        Report(call.place, "returned value\n  expected: " + *call.returns +
                               (expected == *call.returns ? "" : " (" + expected + ")") +
                               "\n  seen:     " + outcome.returned);
    }
    if (call.gestito && call.gestito != outcome.gestito)
    {
        Report(call.place, "Gestito is " + Text(!*call.gestito) + ", expected " + Text(*call.gestito));
    }
}

void Run::CreateProvider(const Place& place, const std::optional<std::string>& fault)
{
    Remember();
    m_place = place;
    if (!m_stage->ReleaseProvider())
    {
        Report(place, "the library could not be unloaded after the provider was released");
    }
    try
    {
        static_cast<void>(m_stage->Provider());
        if (fault)
        {
            Report(place, "the provider was created");
        }
    }
    catch (const host::Fault& seen)
    {
        if (!fault || seen.Description().find(*fault) == std::string::npos)
        {
            Report(place, "creating the provider faulted: " + Quoted(seen.Description()));
        }
    }
}

void Run::Finish(const Place& place)
{
    if (m_narrator != nullptr)
    {
        m_narrator->Logged(m_stage->Practice().LogFolder());
    }
    m_session.reset();
    if (!m_stage->ReleaseProvider())
    {
        Report(place, "the library could not be unloaded after the provider was released: something still holds it");
    }
}

void Run::Tell(const std::string& text)
{
    if (m_narrator != nullptr)
    {
        m_narrator->Say(text);
    }
}

void Run::OnWindow(const Window& window, bool isNew)
{
    if (m_narrator != nullptr)
    {
        m_narrator->WindowSeen(window, isNew);
    }
    TakeScreenshot(window.Title());
    m_touched = false;
}

// A window that the operator has worked in is worth a picture before it goes.
void Run::OnAction(const Window& window, const std::string& told)
{
    if (m_touched)
    {
        TakeScreenshot(window.Title());
    }
    m_touched = true;
    if (m_narrator != nullptr)
    {
        m_narrator->Did(told);
    }
}

// A call travels inside the wait window, which must be on screen and say so.
void Run::OnRequest(const std::string& requestXml)
{
    const auto window = m_stage->GetTarget().Topmost();
    Travel travel;
    if (!window || window->Kind() != WindowKind::Form || window->Title() != "SISS Lombardia")
    {
        Report(m_place, "the request does not travel inside the wait window; on top is " +
                            (window ? player::Describe(*window) : "nothing"));
    }
    else
    {
        auto labels = window->Labels();
        for (const std::string fixed : {"Attendere...", "Trasmissione/Ricezione dati in corso..."})
        {
            const auto found = std::find(labels.begin(), labels.end(), fixed);
            if (found == labels.end())
            {
                Report(m_place, "the wait window does not show " + Quoted(fixed));
            }
            else
            {
                labels.erase(found);
            }
        }
        travel.shownAs = labels.empty() ? "" : labels.front();
        TakeScreenshot(window->Title());
    }
    m_travels.push_back(travel);
    if (m_narrator != nullptr)
    {
        m_narrator->Sent(requestXml, travel.shownAs);
    }
}

// Where nothing else lets the target look at a window that is at work, a statement of its job does.
void Run::OnStatement()
{
    if (m_stage->StatementCount() == m_options.dyingStatement)
    {
        std::_Exit(died);
    }
    const auto window = m_stage->GetTarget().Topmost();
    if (window && !window->ProgressBars().empty())
    {
        m_watch.Look(*window);
    }
}

// The start, the middle and the end of a job are worth a picture.
void Run::OnProgress(const Window& window)
{
    TakeScreenshot(window.Title());
    if (m_narrator != nullptr)
    {
        m_narrator->Progress(window);
    }
}

void Run::TakeScreenshot(const std::string& title)
{
    if (!m_options.screenshots.empty())
    {
        const auto number = std::to_string(++m_pictures + 100).substr(1);
        const auto file = m_options.screenshots / (number + '-' + FileName(title) + ".png");
        static_cast<void>(m_stage->GetTarget().Screenshot(file));
    }
}

} // namespace vellumo::player
