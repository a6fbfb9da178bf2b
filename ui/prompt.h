// A message box as data. Texts are shown as they stand; lines are joined with CR LF.
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
};

} // namespace vellumo::ui
