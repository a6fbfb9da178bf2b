// Finding and naming what a window shows.
#pragma once

#include "host/text.h"
#include "simulator/screen/differs.h"
#include "simulator/screen/window.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace vellumo::screen
{

// As the operator reads it: without the mark before the access key; "&&" is a plain "&".
[[nodiscard]] std::string CaptionOf(ui::Control& control);
template <class Kind>
[[nodiscard]] std::vector<std::string> CaptionsOf(const std::vector<Kind*>& controls)
{
    std::vector<std::string> captions;
    std::transform(controls.begin(), controls.end(), std::back_inserter(captions),
                   [](Kind* control) { return CaptionOf(*control); });
    return captions;
}
[[nodiscard]] std::string NameOf(ui::Icon icon);
// The whole window in one line, for messages.
[[nodiscard]] std::string Describe(const Window& window);

// In the order of `ui::AnyControl`.
inline constexpr std::array controlNames = {"label", "text box", "check box",    "option",
                                            "list",  "grid",     "progress bar", "button"};
template <class Kind>
[[nodiscard]] std::string NameOf()
{
    return controlNames.at(ui::AnyControl(static_cast<Kind*>(nullptr)).index());
}

// Throws Differs when there is none, and says what there is.
template <class Kind>
[[nodiscard]] Kind& Find(const Window& window, const std::string& caption)
{
    const auto all = window.All<Kind>();
    const auto found = std::find_if(all.begin(), all.end(), [&](Kind* each) { return CaptionOf(*each) == caption; });
    if (found == all.end())
    {
        throw Differs("no " + NameOf<Kind>() + ' ' + Quoted(caption) +
                      "; there is: " + (all.empty() ? "none" : Quoted(host::Joined(CaptionsOf(all), "\" / \""))));
    }
    return **found;
}
// `number` counts from 1.
template <class Kind>
[[nodiscard]] Kind& Find(const Window& window, std::size_t number)
{
    return *Numbered(window.All<Kind>(), number, NameOf<Kind>());
}

} // namespace vellumo::screen
