#include "tests/life/life.h"

#include "environment/ansi_text.h"
#include "host/fault.h"
#include "tests/life/judge.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <random>
#include <sstream>

namespace vellumo::life
{
namespace
{

namespace fs = std::filesystem;
using Provider = std::unique_ptr<provider::SISSProvider>;

void Cut(std::string& text, const std::string& element)
{
    const auto begin = text.find('<' + element + '>');
    const std::string last = "</" + element + '>';
    if (begin != std::string::npos)
    {
        text.erase(begin, text.find(last, begin) + last.size() - begin);
    }
}

// Most of a session's time goes into values that nothing here looks at.
void CutValues(std::string& text)
{
    std::size_t begin = 0;
    while ((begin = text.find('<', begin)) != std::string::npos)
    {
        const std::size_t end = text.find('>', begin) + 1;
        const std::string tag = text.substr(begin, end - begin);
        const bool isValue = tag.ends_with("/>") && tag.find(' ') == std::string::npos;
        const bool isKept = tag == "<codiceFiscaleCittadino/>" || tag == "<codicePrestazione/>";
        if (isValue && !isKept)
        {
            text.erase(begin, end - begin);
        }
        else
        {
            begin = end;
        }
    }
}

// The calls of the host program, in one process.
class Host
{
public:
    explicit Host(World& world)
        : m_world(world)
        , m_provider(world.StartProvider())
    {
    }

    void Work()
    {
        m_world.fails = m_world.plan.fromTheStart;
        std::shared_ptr<host::PrescriptionSession> session;
        const auto mayFault = [&] { return m_world.outside.faults > 0; };
        Try("the opening", mayFault, [&] { session = m_provider->ApriSessionePrescrizione(); });
        m_world.fails = true;
        for (const Round& round : m_world.plan.rounds)
        {
            if (session)
            {
                Register(*session, round);
                if (round.closes)
                {
                    Close(*session, round.closing);
                }
            }
        }
        m_world.fails = false;
        session = nullptr;
        if (m_world.outside.faults > 0)
        {
            OpenNext();
        }
    }

private:
    // Whatever failed before.
    void OpenNext()
    {
        std::shared_ptr<host::PrescriptionSession> session;
        const auto never = [] { return false; };
        Try("the next opening", never, [&] { session = m_provider->ApriSessionePrescrizione(); });
        if (!session)
        {
            m_world.outside.Violated("the next session does not open");
        }
    }

    void Register(host::PrescriptionSession& session, const Round& round)
    {
        m_world.network.Expect(round);
        std::vector<const Prescription*> done;
        for (const Sending& sending : round.sendings)
        {
            const Prescription& prescription = m_world.plan.prescriptions.at(sending.prescription);
            const bool isDone =
                std::ranges::any_of(done, [&](const Prescription* other)
                                    { return other->form == prescription.form && other->kind == prescription.kind; });
            if (!round.wholeForms)
            {
                Try("a registration", MayFault(),
                    [&] {
                        m_provider->RegistraPrescrizioneSingola(&session, prescription.form, prescription.number,
                                                                prescription.kind);
                    });
            }
            else if (!isDone)
            {
                Try("a registration", MayFault(),
                    [&] { m_provider->RegistraPrescrizione(&session, prescription.form, prescription.kind); });
            }
            done.push_back(&prescription);
        }
    }

    void Close(host::PrescriptionSession& session, const Closing& closing)
    {
        Provider other; // outlives the close
        if (closing.byOtherProvider)
        {
            other = std::move(m_provider);
            if (closing.firstReleasedBefore)
            {
                other = nullptr;
            }
            m_provider = m_world.StartProvider();
        }
        m_world.button = closing.button;
        m_world.givenUp = false;
        m_world.readCodes.clear();
        m_world.sessionFaulted = false;
        Try("the close", MayFault(), [&] { m_provider->ChiudiSessionePrescrizione(&session); });
        m_world.givenUp = false;
        JudgeBrokenSession(m_world);
        if (m_world.outside.faults == 0 && !m_world.plan.brokenTemplates)
        {
            JudgeRound(m_world, closing);
        }
        if (!m_world.tracesOnDisk)
        {
            JudgeResults(m_world);
        }
    }

    // The session's own properties are read outside of what the library traps.
    [[nodiscard]] std::function<bool()> MayFault() const
    {
        return [&outside = m_world.outside]
        {
            return outside.failedAt.at(static_cast<std::size_t>(Point::SessionFlags)) ||
                   outside.failedAt.at(static_cast<std::size_t>(Point::SessionOptions));
        };
    }

    template <class Operation>
    void Try(const char* what, const std::function<bool()>& mayFault, Operation&& operation)
    {
        try
        {
            operation();
        }
        catch (const host::Fault& fault)
        {
            if (!mayFault())
            {
                m_world.outside.Violated(std::string("a fault came out of ") + what + ": " + fault.what());
            }
        }
        catch (...)
        {
            m_world.outside.Violated(std::string("an exception came out of ") + what);
        }
    }

    World& m_world;
    Provider m_provider;
};

// The program is started again; its first operation tells what was left.
void StartAgain(World& world)
{
    const Provider provider = world.StartProvider();
    if (provider->IsPersonaleStudio())
    {
        world.outside.Violated("the doctor is taken for staff");
    }
}

// Runs in a process of its own, which may end anywhere.
void InProcess(Outside& outside, const std::function<void()>& work)
{
    const pid_t child = fork();
    if (child == 0)
    {
        work();
        _exit(0);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
    {
        outside.Violated("the process did not end by itself");
    }
}

// Lines and open codes as the files have them.
void ReadTraces(const fs::path& folder, Outside& outside)
{
    outside.traces.Clear();
    outside.openCodes.Clear();
    std::error_code none;
    for (const auto& file : fs::directory_iterator(folder, none))
    {
        const bool hasCodes = file.path().filename().string().starts_with("codici");
        std::ifstream in(file.path(), std::ios::binary);
        for (std::string line; std::getline(in, line);)
        {
            if (!hasCodes || line.starts_with('*'))
            {
                (hasCodes ? outside.openCodes : outside.traces).Add(environment::FromAnsi(line));
            }
        }
    }
}

// The lines of the codes that were left when nothing failed any more.
void JudgeRecovered(const std::string& left, World& world)
{
    Outside& outside = world.outside;
    std::istringstream lines(left);
    for (std::string line; std::getline(lines, line);)
    {
        std::istringstream fields(line);
        std::string subject;
        std::string code;
        for (int field = 0; field < 5; ++field)
        {
            std::getline(fields, subject, '\t');
        }
        std::getline(fields, code, '\r');
        if (!outside.journal.Tell(code, subject) && !IsConfirmed(world, subject, code))
        {
            code.append(" of \"").append(subject).append("\" was left in the folder and is not in the journal");
            outside.Violated(code);
        }
    }
}

// The program ends somewhere and is started again, perhaps twice.
void PlayWithDeath(const Plan& plan, Outside& outside, const Programs& programs)
{
    World world(plan, outside, programs.Folder(plan.brokenTemplates));
    const fs::path traces = programs.Traces(plan.brokenTemplates);
    world.tracesOnDisk = true;
    InProcess(outside,
              [&]
              {
                  world.deathAt = plan.deathAt;
                  Host(world).Work();
              });
    ReadTraces(traces, outside);
    JudgeCodes(world, false);
    if (plan.secondDeathAt != 0)
    {
        InProcess(outside,
                  [&]
                  {
                      outside.calls = 0;
                      world.deathAt = plan.secondDeathAt;
                      StartAgain(world);
                  });
        ReadTraces(traces, outside);
        JudgeCodes(world, false);
    }
    const std::string left(outside.openCodes.View());
    if (plan.startsInVain)
    {
        world.journalRefuses = true;
        StartAgain(world);
        world.journalRefuses = false;
    }
    StartAgain(world);
    ReadTraces(traces, outside);
    JudgeCodes(world, true);
    JudgeRecovered(left, world);
    fs::remove_all(traces);
}

} // namespace

void Play(const Plan& plan, Outside& outside, const Programs& programs)
{
    outside.Reset(plan);
    if (plan.deathAt != 0)
    {
        PlayWithDeath(plan, outside, programs);
        return;
    }
    World world(plan, outside, programs.Folder(plan.brokenTemplates));
    Host(world).Work();
    JudgeCodes(world, false);
    StartAgain(world);
    JudgeCodes(world, true);
    JudgeLines(world);
}

// --- Programs ---

Programs::Programs(const fs::path& templates)
{
    const fs::path memory = "/dev/shm";
    std::error_code none;
    const fs::path base = fs::is_directory(memory, none) ? memory : fs::temp_directory_path();
    do
    {
        m_folder = base / ("vellumo-life-" + std::to_string(std::random_device()()));
    } while (!fs::create_directories(m_folder));
    for (const bool broken : {false, true})
    {
        const fs::path target = Traces(broken).parent_path() / "Templates";
        fs::create_directories(target);
        for (const auto& file : fs::directory_iterator(templates))
        {
            std::stringstream text;
            text << std::ifstream(file.path()).rdbuf();
            std::string bytes = text.str();
            CutValues(bytes);
            if (broken)
            {
                const bool drugs = file.path().filename() == "registraPrescrizioneFarmaco.template";
                Cut(bytes, drugs ? "elencoPrestazioni" : "prestazione");
            }
            std::ofstream(target / file.path().filename()) << bytes;
        }
    }
}

Programs::~Programs()
{
    std::error_code none;
    fs::remove_all(m_folder, none);
}

std::string Programs::Folder(bool brokenTemplates) const
{
    std::string path = (m_folder / (brokenTemplates ? "broken" : "whole")).string();
    std::ranges::replace(path, '/', '\\');
    return path;
}

fs::path Programs::Traces(bool brokenTemplates) const
{
    return m_folder / (brokenTemplates ? "broken" : "whole") / "SISS" / "Tracce";
}

} // namespace vellumo::life
