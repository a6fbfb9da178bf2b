// A message box as data. Lines are joined with CR LF. A box shows at most 2,000 characters and 25 lines: what servers
// and drivers say may be megabytes, and a box higher than the screen hides its buttons.
#pragma once

#include <string>

namespace vellumo::ui
{

enum class Icon
{
    None,
    Critical,
    Exclamation,
    Information
};

// Named in the order in which the buttons stand; the default button is counted in that order.
enum class Buttons
{
    Ok,
    YesNo,
    YesNoCancel,
    RetryCancel
};

enum class Answer
{
    Ok,
    Cancel,
    Retry,
    Yes,
    No
};

struct Prompt
{
    std::string text;
    std::string title;
    Icon icon = Icon::None;
    Buttons buttons = Buttons::Ok;
    int defaultButton = 1;
    // Continues the text and is seen also behind one that is too long, unless it takes more than half of the box
    // itself.
    std::string ending = {};
};

// As a box shows it: all of the text in `text`, too long a one ends with "…" where it is cut.
[[nodiscard]] Prompt Fitted(const Prompt& prompt);

} // namespace vellumo::ui
