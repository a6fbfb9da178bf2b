// Tells a scenario to a person while it runs: each call, window, exchange and outcome, in Italian, and a closing
// summary.
#pragma once

#include "player/expectation.h"
#include "player/operations.h"
#include "player/snapshot.h"

#include <cstddef>
#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

namespace vellumo::player
{

class Narrator
{
public:
    explicit Narrator(std::ostream& out)
        : m_out(out)
    {
    }

    void Begin(const std::string& title);
    void Say(const std::string& text);
    void CallBegins(const std::string& operation, const std::string& argument);
    void Sent(const std::string& requestXml, const std::string& shownAs);
    void Received(const std::string& reply);
    void WindowSeen(const Window& window, bool isNew);
    void Progress(const Window& window);
    void Did(const std::string& action);
    void CallEnds(const Outcome& outcome, const std::vector<RowChange>& stored);
    void Logged(const std::filesystem::path& logFolder);
    void Summary(std::size_t scenarios, std::size_t failed);

private:
    void TellStored(const std::vector<RowChange>& stored);

    std::ostream& m_out;
    std::size_t m_calls = 0;
    std::size_t m_exchanges = 0;
    std::size_t m_windows = 0;
    std::size_t m_rows = 0;
};

} // namespace vellumo::player
