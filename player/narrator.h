// Tells a scenario to a person while it runs: each call, window, exchange and outcome, in Italian, and a closing
// summary.
#pragma once

#include "player/statement.h"
#include "simulator/norda/snapshot.h"
#include "simulator/screen/window.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace vellumo::player
{

// What came back from a call.
struct Outcome
{
    std::string returned; // "" when it faulted
    std::optional<bool> gestito;
    std::optional<std::string> fault; // its description
};

class Narrator
{
public:
    // `isHeard`: somebody listens, else nothing is told.
    Narrator(std::ostream& out, bool isHeard)
        : m_out(isHeard ? out.rdbuf() : nullptr)
        , m_isHeard(isHeard)
    {
    }

    [[nodiscard]] bool IsHeard() const noexcept { return m_isHeard; }

    void Begin(const std::string& title);
    void Say(const std::string& text);
    void CallBegins(const std::string& operation, const std::string& argument);
    void Sent(const std::string& requestXml, const std::string& shownAs);
    void Received(const std::string& reply);
    void WindowSeen(const screen::Window& window, bool isNew);
    void Progress(const screen::Window& window);
    void Did(const Node& action);
    void CallEnds(const Outcome& outcome, const std::vector<norda::RowChange>& stored);
    void Logged(const std::filesystem::path& logFolder);
    void Summary(std::size_t scenarios, std::size_t failed);

private:
    // One line of the story: what happens, and more about it.
    void Say(const std::string& what, const std::string& text);
    void SayStored(const std::vector<norda::RowChange>& stored);

    std::ostream m_out;
    bool m_isHeard;
    std::size_t m_calls = 0;
    std::size_t m_exchanges = 0;
    std::size_t m_windows = 0;
    std::size_t m_rows = 0;
};

} // namespace vellumo::player
