#include "player/controls.h"

#include "player/written.h"

#include <algorithm>
#include <array>
#include <map>

namespace vellumo::player
{
namespace
{

// In the order of ControlKind.
constexpr std::array kinds = {"label", "button", "check box or option", "text box", "list", "progress bar", "grid"};

std::string NameOf(ControlKind kind)
{
    return kinds.at(static_cast<std::size_t>(kind));
}

} // namespace

std::string NameOf(ui::Answer answer)
{
    static const std::map<ui::Answer, std::string> names = {{ui::Answer::Ok, "OK"},
                                                            {ui::Answer::Cancel, "Cancel"},
                                                            {ui::Answer::Retry, "Retry"},
                                                            {ui::Answer::Yes, "Yes"},
                                                            {ui::Answer::No, "No"}};
    return names.at(answer);
}

std::string NameOf(ui::Icon icon)
{
    static const std::map<ui::Icon, std::string> names = {{ui::Icon::None, "plain"},
                                                          {ui::Icon::Critical, "critical"},
                                                          {ui::Icon::Exclamation, "exclamation"},
                                                          {ui::Icon::Information, "information"}};
    return names.at(icon);
}

std::string WithoutAccessKey(const std::string& caption)
{
    std::string text;
    for (std::size_t i = 0; i < caption.size(); ++i)
    {
        i += caption[i] == '&' && i + 1 < caption.size() ? 1U : 0U;
        text += caption[i];
    }
    return text;
}

std::string NameOf(const ControlSeen& control)
{
    return control.answer ? NameOf(*control.answer) : control.caption;
}

std::vector<std::string> NamesOf(const std::vector<ControlSeen>& controls)
{
    std::vector<std::string> names;
    std::transform(controls.begin(), controls.end(), std::back_inserter(names),
                   [](const ControlSeen& control) { return NameOf(control); });
    return names;
}

std::string Describe(const Window& window)
{
    const auto buttons = Joined(NamesOf(window.All(ControlKind::Button)), "/");
    return window.Kind() == WindowKind::Box ? "the box " + Quoted(window.Title()) + ' ' + NameOf(window.Icon()) + ' ' +
                                                  buttons + " with the text " + Quoted(window.Text())
                                            : "the window " + Quoted(window.Title()) + " with the buttons " + buttons;
}

Found Find(const Window& window, ControlKind kind, const std::string& name)
{
    const auto all = window.All(kind);
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const ControlSeen& each) { return NameOf(each) == name; });
    if (found == all.end())
    {
        throw Differs("no " + NameOf(kind) + ' ' + Quoted(name) +
                      "; there is: " + (all.empty() ? "none" : Quoted(Joined(NamesOf(all), "\" / \""))));
    }
    return {static_cast<std::size_t>(found - all.begin()), *found};
}

Found Find(const Window& window, ControlKind kind, std::int32_t number)
{
    const auto all = window.All(kind);
    const auto place = static_cast<std::size_t>(number) - 1;
    if (number < 1 || place >= all.size())
    {
        throw Differs("no " + NameOf(kind) + ' ' + std::to_string(number) + "; they are counted from 1 to " +
                      std::to_string(all.size()));
    }
    return {place, all[place]};
}

} // namespace vellumo::player
