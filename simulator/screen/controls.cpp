#include "simulator/screen/controls.h"

namespace vellumo::screen
{

std::string CaptionOf(ui::Control& control)
{
    if (ui::As<ui::Label>(control) != nullptr)
    {
        return control.text;
    }
    std::string caption;
    for (std::size_t i = 0; i < control.text.size(); ++i)
    {
        i += control.text[i] == '&' && i + 1 < control.text.size() ? 1U : 0U;
        caption += control.text[i];
    }
    return caption;
}

std::string NameOf(ui::Icon icon)
{
    constexpr std::array names = {"plain", "critical", "exclamation", "information"};
    return names.at(static_cast<std::size_t>(icon));
}

std::string Describe(const Window& window)
{
    const auto buttons = host::Joined(CaptionsOf(window.All<ui::Button>()), "/");
    return window.Kind() == WindowKind::Box ? "the box " + Quoted(window.Title()) + ' ' + NameOf(window.Icon()) + ' ' +
                                                  buttons + " with the text " + Quoted(window.Text())
                                            : "the window " + Quoted(window.Title()) + " with the buttons " + buttons;
}

} // namespace vellumo::screen
