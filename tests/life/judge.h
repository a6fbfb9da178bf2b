// What must hold in every life. Each of these adds what it finds to `Outside::violations`.
#pragma once

#include "tests/life/host.h"

namespace vellumo::life
{

// A code that the folder of traces is no longer to keep must be in its row or in the journal.
void JudgeSettled(World& world, const host::OpenCode& code);

// The row of that prescription has the code ("IUP …") and the number that confirms it, so that no line need tell of it.
[[nodiscard]] bool IsConfirmed(const World& world, std::string_view subject, std::string_view code);

// After a close in which nothing failed: what the reply and its order say for sure is stored, nothing else is.
void JudgeRound(World& world, const Closing& closing);

// After a close whose session faulted while it was read: what was read before is in the journal at once.
void JudgeBrokenSession(World& world);

// After a close of any kind: where the results of its reply are.
void JudgeResults(World& world);

// Every code in a reply that reached the library is where it belongs. `started`: the program was started once more, so
// that nothing may be left open.
void JudgeCodes(World& world, bool started);

// Each line went to the journal and to the folder.
void JudgeLines(World& world);

} // namespace vellumo::life
