// One scenario while it is played: what its lines act on, and the differences found so far.
#pragma once

#include "player/narrator.h"
#include "player/scripted_operator.h"
#include "player/stage.h"
#include "simulator/norda/snapshot.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vellumo::player
{

struct Difference
{
    Place place;
    std::string what;
};

// What a line opens for those that belong to it.
struct Opened
{
    std::string citizen; // his code
    siss::Behaviour reply;
    std::size_t request = 0; // counted from 0
    siss::Element requestBody;
    std::filesystem::path logFolder;
};

// A call that is being made.
struct CallInProgress
{
    std::vector<norda::Argument> arguments; // of the operation, in order; a session is none
    std::int32_t kind = 0;                  // of a prescription: 1 drugs, 2 tests
    Outcome outcome;
};

// The folder of the scenario's file is where the files that it names lie.
[[nodiscard]] std::filesystem::path FileBeside(const Node& node, const std::string& name);

class Run final : public screen::Operator
{
public:
    // Exit code of a process that ended at its `dyingStatement`.
    static constexpr int died = 77;

    struct Options
    {
        std::filesystem::path screenshots;  // folder to save them in; empty: none are taken
        std::filesystem::path renamed = {}; // where a library is that knows its host by other names; empty: it does not
        bool strict = false;                // the host is from the beginning
        bool snapshots = false;             // the scenario compares the database
        bool lenient = false;               // something fails on purpose, so that a call may go otherwise
        std::size_t failingStatement = 0;   // of a sweep: the statement of the library that fails; 0: none
        std::size_t dyingStatement = 0;     // the statement before which the process ends; 0: none
    };
    Run(norda::Practice practice, Options options, Narrator& narrator);

    // Does what the line says and reports what differs; True when nothing did.
    bool Play(const Node& node);
    // The lines that belong to it.
    void PlayBelow(const Node& node);
    // Releases the provider, and looks whether the library could be unloaded and which lines had no effect.
    void Finish(const Place& place);

    void Report(const Place& place, const std::string& what) { m_differences.push_back({place, what}); }
    [[nodiscard]] const std::vector<Difference>& Differences() const noexcept { return m_differences; }
    // Lines that set something up and changed nothing, so that they say what is not so.
    [[nodiscard]] const std::vector<Difference>& WithoutEffect() const noexcept { return m_withoutEffect; }

    // For the statements.
    [[nodiscard]] Stage& GetStage() noexcept { return *m_stage; }
    [[nodiscard]] Opened& Open() noexcept { return m_opened; }
    [[nodiscard]] CallInProgress& Current() noexcept { return m_current; }
    // The window at which the operator is.
    [[nodiscard]] screen::Window& TheWindow() noexcept { return *m_window; }
    // What the wait window named for each request.
    [[nodiscard]] const std::vector<std::string>& ShownAs() const noexcept { return m_shownAs; }
    void Tell(const std::string& text) { m_narrator.Say(text); }
    void Call(const Node& call);
    // From the next call on the operator takes the default button where no line says anything else.
    void AnswerByDefault() noexcept { m_answersByDefault = true; }
    // A second call, from a timer of the host's, which hands everything over anew before it.
    void CallMeanwhile(const Node& line);
    // Creates the provider now, which fails when the line says so.
    void CreateProvider(const Node& line);
    // The line changes nothing, now or at the end of the scenario.
    void HasNoEffect(const Node& line, const std::string& why) { m_withoutEffect.push_back({line.place, why}); }
    void MustHaveEffect(const Node& line, const std::string& otherwise, const std::function<bool()>& hadEffect)
    {
        m_mustHaveEffect.push_back({{line.place, otherwise}, hadEffect});
    }
    // 0 when nobody has it.
    [[nodiscard]] std::int32_t PatientId(const std::string& codiceFiscale);

    // For the operator. Plays a line that belongs to a window.
    bool PlayIn(screen::Window& window, const Node& line);
    // Whether the window is as the line says.
    [[nodiscard]] bool IsSo(const Node& look, screen::Window& window);
    // A window came on top, or came back.
    void OnWindow(const screen::Window& window, bool isNew);
    // A window that is at work: the first look at it, the first at its middle and the first at its end.
    void OnMilestone(const screen::Window& window);

    // What came back from each call so far.
    [[nodiscard]] const std::vector<Outcome>& Outcomes() const noexcept { return m_outcomes; }
    // From now on nothing fails on purpose any more.
    void FailNoMore() noexcept
    {
        m_options.lenient = false;
        m_stage->Host().FailNoMore();
    }

    // What has changed since before the first call.
    [[nodiscard]] std::vector<norda::RowChange> Changes();
    // All rows before the first call, and now. Only with snapshots.
    [[nodiscard]] const norda::Snapshot& Before() const { return m_before.value(); }
    [[nodiscard]] norda::Snapshot Now() { return norda::TakeSnapshot(m_stage->Database()); }
    // The library's first statement after each reply of SISS that was followed by one.
    [[nodiscard]] const std::vector<std::size_t>& StatementsAfterReplies() const noexcept { return m_statementsAfter; }
    // Whether the failing statement of a sweep has been reached.
    [[nodiscard]] bool HasFailed() const noexcept
    {
        return m_stage->Host().Statements().size() >= m_options.failingStatement;
    }

private:
    void OnScreen(screen::Window& window) noexcept override;
    void OnBusy(screen::Window& window) noexcept override;
    void OnRequest(const std::string& requestXml);
    void OnStatement();
    [[nodiscard]] std::string LookAtWaitWindow();
    void TakeArguments(const Node& operation);
    // A fault is its outcome.
    void Make(const Node& operation);
    void Compare(const Node& call);
    // Of the provider and the session.
    void LetGo(const Place& place);
    void TakeScreenshot(const std::string& title);
    void Remember();
    [[nodiscard]] std::string Describe(const Node& operation);
    // ", Anna Ferrari"; "" for nobody of the practice.
    [[nodiscard]] std::string NameOf(const host::Value& patient);

    Options m_options;
    Narrator& m_narrator;
    std::vector<Difference> m_differences;
    std::vector<Difference> m_withoutEffect;
    std::vector<std::pair<Difference, std::function<bool()>>> m_mustHaveEffect; // looked at in the end
    std::optional<ScriptedOperator> m_operator;                                 // of the last call
    bool m_answersByDefault = false;
    std::unique_ptr<Stage> m_stage;
    std::optional<norda::Snapshot> m_before;
    Opened m_opened;
    CallInProgress m_current;
    std::vector<Outcome> m_outcomes;
    const Node* m_call = nullptr; // being made
    screen::Window* m_window = nullptr;
    Place m_place; // of the line being played
    std::vector<std::string> m_shownAs;
    std::vector<std::size_t> m_statementsAfter;
    int m_pictures = 0;
    bool m_touched = false; // something was done to the window since its last picture
};

} // namespace vellumo::player
