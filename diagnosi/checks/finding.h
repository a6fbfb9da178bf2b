// What a check of an installation ends with. Texts are Italian, for support staff and whoever is on the telephone with
// them.
#pragma once

#include <string>

namespace vellumo::diagnosi
{

enum class State
{
    Ok,
    Attention, // works, but somebody should look at it
    Error      // something does not work
};

struct Finding
{
    State state = State::Ok;
    std::string found;
    std::string remedy = {}; // what to do; "" for Ok
};

// "ok", "attenzione", "errore".
[[nodiscard]] const char* NameOf(State state) noexcept;

// Several findings of one check as one: the worst state, each text on a line of its own, equal ones once.
class Findings
{
public:
    void Add(const Finding& finding);
    // `whole` when nothing was added.
    [[nodiscard]] Finding Sum(const std::string& whole) const;

private:
    Finding m_sum;
};

} // namespace vellumo::diagnosi
