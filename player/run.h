// One scenario while it runs: what its steps act on, and the differences found so far.
#pragma once

#include "player/expectation.h"
#include "player/narrator.h"
#include "player/operations.h"
#include "player/player.h"
#include "player/progress_watch.h"
#include "player/snapshot.h"
#include "player/stage.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vellumo::player
{

struct Difference
{
    Place place;
    std::string what;
};

// A value of a call, written "12", "null", "patient RSSMRA45C12F205C", "certificate 3", "reference 12" …; a patient is
// looked up and a certificate loaded when the call is made.
struct CallArgument
{
    norda::Passing passing = norda::Passing::Missing;
    host::Value value;
    std::string patient;          // fiscal code; "" for none
    std::int32_t certificate = 0; // its number; 0 for none
};

struct Call
{
    Place place;
    std::string operation;
    CallArgument argument;
    CallArgument second;
    std::int32_t kind = 0; // of a prescription: 1 drugs, 2 tests
    std::vector<ExpectedWindow> windows;
    std::vector<ExpectedWindow> watched; // windows with a progress bar, which are at work and wait for nobody
    // The practice's folder, known once the call is made.
    std::shared_ptr<std::filesystem::path> folder = std::make_shared<std::filesystem::path>();
    std::optional<std::string> returns; // "12", "True", "patient …", "new patient"
    std::optional<bool> gestito;
    std::optional<std::string> fault; // part of its description
};

// What one request showed on its way.
struct Travel
{
    std::string shownAs; // the operation that the wait window named
};

class Run
{
public:
    // Exit code of a process that ended at its `dyingStatement`.
    static constexpr int died = 77;

    struct Options
    {
        std::filesystem::path screenshots; // empty: none are taken
        bool snapshots = false;            // the scenario, or its narrator, compares the database
        std::size_t failingStatement = 0;  // of a sweep: the statement of the library that fails; 0: none
        std::size_t dyingStatement = 0;    // the statement before which the process ends; 0: none
    };
    Run(const std::filesystem::path& model, const std::filesystem::path& folder, Options options, Narrator* narrator);

    // Null before the first is opened.
    [[nodiscard]] const norda::PrescriptionSession* Session() const noexcept { return m_session.get(); }
    [[nodiscard]] Stage& GetStage() noexcept { return *m_stage; }
    void Tell(const std::string& text);
    void Report(const Place& place, const std::string& what) { m_differences.push_back({place, what}); }
    [[nodiscard]] const std::vector<Difference>& Differences() const noexcept { return m_differences; }

    void Perform(const Call& call);
    // Creates the provider now; `fault` empty: it must succeed.
    void CreateProvider(const Place& place, const std::optional<std::string>& fault);
    // Releases the provider and looks whether the library could be unloaded.
    void Finish(const Place& place);

    // What has changed since before the first call.
    [[nodiscard]] std::vector<RowChange> Changes();
    // All rows before the first call, and now. Only with snapshots.
    [[nodiscard]] const Snapshot& Before() const { return m_before.value(); }
    [[nodiscard]] Snapshot Now() { return TakeSnapshot(m_stage->Database()); }
    [[nodiscard]] const std::vector<Travel>& Travels() const noexcept { return m_travels; }
    // Whether the failing statement of a sweep has been reached.
    [[nodiscard]] bool HasFailed() const noexcept { return m_stage->StatementCount() >= m_options.failingStatement; }

private:
    void Compare(const Call& call, const Outcome& outcome);
    void OnWindow(const Window& window, bool isNew);
    void OnAction(const Window& window, const std::string& told);
    void OnRequest(const std::string& requestXml);
    void OnStatement();
    void OnProgress(const Window& window);
    void TakeScreenshot(const std::string& title);
    void Remember();
    [[nodiscard]] std::string Describe(const Call& call, const Asked& asked);
    // ", Anna Ferrari"; "" for nobody of the practice.
    [[nodiscard]] std::string NameOf(const host::Value& patient);
    [[nodiscard]] std::int32_t PatientId(const std::string& codiceFiscale);

    Options m_options;
    Narrator* m_narrator;
    std::vector<Difference> m_differences;
    ProgressWatch m_watch;
    Player m_player;
    std::unique_ptr<Stage> m_stage;
    std::shared_ptr<norda::PrescriptionSession> m_session; // that the host keeps
    std::optional<Snapshot> m_before;
    Place m_place; // of the call being made
    std::vector<Travel> m_travels;
    int m_pictures = 0;
    bool m_touched = false; // something was done to the window since its last picture
};

} // namespace vellumo::player
