// A scenario file that plays what a log has recorded: each operation is a scenario in a fresh practice, its patients
// are made as the requests show them, SISS answers with the very replies of the log, the windows are answered by their
// defaults, and each request must go out as it did. docs/scenarios.md explains the language; the file is for whoever
// develops, who then changes what the operator did and says what should have come of it.
#pragma once

#include "diagnosi/exchanges/exchange_record.h"

#include <string>

namespace vellumo::diagnosi
{

// UTF-8, lines end in "\n". What cannot be played stands there as a comment. Without an operation that can be played
// the text is "". Faults only for lack of memory.
[[nodiscard]] std::string ScenarioOf(const ExchangeRecord& record);

} // namespace vellumo::diagnosi
