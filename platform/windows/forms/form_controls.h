// The controls of a form in its window: made once, found by the form's control or by the identifier of the Windows
// control. Lives as long as the window, which owns the Windows controls.
#pragma once

#include "platform/windows/forms/accessible_window.h"
#include "platform/windows/forms/control_view.h"
#include "platform/windows/forms/surface.h"
#include "ui/form.h"

#include <memory>
#include <vector>

namespace vellumo::windows
{

class FormControls
{
public:
    // Makes no Windows control yet: what they need is asked first.
    FormControls(const ui::Form& form, const Surface& surface);

    // Makes them: the visible ones at their places, the others where nothing is seen. Faults when one cannot be made.
    // The default button becomes the window's own.
    void Make(const std::vector<RECT>& placesOfVisible);

    // One a control of the form, in its order.
    [[nodiscard]] const std::vector<std::unique_ptr<ControlView>>& All() const noexcept { return m_views; }
    [[nodiscard]] std::vector<ControlView*> Visible() const;
    // Null when there is no such control.
    [[nodiscard]] ControlView* ViewOf(const ui::Control& control) const;
    [[nodiscard]] ControlView* ViewOfId(WORD id) const;

private:
    void AnswerReaders();

    const ui::Form& m_form;
    const Surface& m_surface;
    std::vector<std::unique_ptr<ControlView>> m_views;
    std::vector<std::unique_ptr<AccessibleWindow>> m_accessible;
};

} // namespace vellumo::windows
