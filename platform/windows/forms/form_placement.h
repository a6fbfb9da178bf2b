// Where a form's window stands on the screen and its controls in the window: how large it must be, how small it may
// get, and what goes where when it is resized.
#pragma once

#include "platform/windows/forms/form_controls.h"
#include "platform/windows/forms/surface.h"
#include "ui/form.h"

#include <windows.h>

namespace vellumo::windows
{

class FormPlacement
{
public:
    // All of them outlive it.
    FormPlacement(const ui::Form& form, const Surface& surface, const FormControls& controls)
        : m_form(form)
        , m_surface(surface)
        , m_controls(controls)
    {
    }

    // In the middle of the owner, or of its screen, and never beyond the edge. `owner` may be null.
    void PlaceWindow(HWND owner) const;
    // At another density: where the system suggests, but no smaller than everything needs.
    void MoveTo(const RECT& suggested) const;
    // In the window's present size.
    void PlaceControls() const;
    // The window may not get smaller than everything needs, as far as the screen allows it.
    void Limit(MINMAXINFO& limits) const;

private:
    [[nodiscard]] SIZE NeededFrame() const;

    const ui::Form& m_form;
    const Surface& m_surface;
    const FormControls& m_controls;
};

} // namespace vellumo::windows
