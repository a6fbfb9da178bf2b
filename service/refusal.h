// What the operator is asked when SISS refuses an operation with a code that he can do something about.
#pragma once

#include "ui/desktop.h"

#include <string_view>

namespace vellumo::service
{

// What becomes of the refused operation.
enum class AfterRefusal
{
    End,                // nothing more
    GoOnWithoutSession, // the operator wants to go on, though no SISS session is active
    GoOnWithoutCitizen, // and though SISS does not know the citizen
    Retry,
    Report, // the code is not one of these: the caller reports the failure
};

// Asks the question that belongs to the code, where there is one; `note` is added to a question whether to go on, as a
// paragraph of its own. Codes are compared exactly.
[[nodiscard]] AfterRefusal AskAfterRefusal(std::string_view code, ui::Desktop& desktop, std::string_view note = {});

} // namespace vellumo::service
