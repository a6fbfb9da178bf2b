// Where a form's window stands on the screen and its controls in the window: how large it must be, how small it may
// get, and what goes where when it is resized.
#pragma once

#include "platform/windows/forms/form_controls.h"
#include "platform/windows/forms/form_layout.h"
#include "platform/windows/forms/surface.h"
#include "ui/form.h"

#include <windows.h>

#include <optional>
#include <vector>

namespace vellumo::windows
{

class FormPlacement
{
public:
    // All of them outlive it.
    FormPlacement(const ui::Form& form, const Surface& surface, FormControls& controls)
        : m_form(form)
        , m_surface(surface)
        , m_controls(controls)
    {
    }

    // In the middle of the owner, or of its screen, and never beyond the edge; then makes the controls. `owner` may be
    // null.
    void Open(HWND owner);
    // At another density: where the system suggests, but no smaller than everything needs.
    void MoveTo(const RECT& suggested);
    // In the window's present size; does nothing before they are made.
    void PlaceControls();
    // The window may not get smaller than everything needs, as far as the screen allows it.
    void Limit(MINMAXINFO& limits);
    // A control has changed: what it needs is to be asked anew.
    void Forget() { m_layout.reset(); }

private:
    [[nodiscard]] const FormLayout& Layout();
    [[nodiscard]] SIZE NeededFrame();
    void Occupy(const RECT& wanted, const RECT& work);
    [[nodiscard]] std::vector<RECT> Places();

    const ui::Form& m_form;
    const Surface& m_surface;
    FormControls& m_controls;
    // Asked for again and again while the window is sized, and all texts are measured for it.
    std::optional<FormLayout> m_layout;
    std::vector<ControlView*> m_laidOut; // what it lays out
    bool m_isOpen = false;
    SIZE m_placedIn{-1, -1}; // inner size
};

} // namespace vellumo::windows
