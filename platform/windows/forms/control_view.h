// One control of a form as Windows controls. It shows the control's state, writes the operator's input into it and
// says what the form is to be told. Lives as long as its window; the windows that it makes are children of that one.
#pragma once

#include "platform/windows/forms/form_layout.h"
#include "platform/windows/forms/surface.h"
#include "platform/windows/forms/text_window.h"
#include "ui/controls.h"

#include <memory>

namespace vellumo::windows
{

// What the form is to be told after an input; the control already holds its new state.
enum class Event
{
    None,
    Clicked,
    Changed
};

// Sent to the window by a text box that searches a list, for a key that moves in the list: wParam is the virtual key,
// lParam the identifier of the box.
constexpr UINT listKeyMessage = WM_APP + 1;

class ControlView
{
public:
    virtual ~ControlView() = default;
    ControlView(const ControlView&) = delete;
    ControlView& operator=(const ControlView&) = delete;

    [[nodiscard]] ui::Control& Control() const noexcept { return m_control; }
    // The Windows control that takes the operator's input; null for one that only shows something.
    [[nodiscard]] virtual HWND Input() const noexcept { return nullptr; }

    // The Windows control that is this one to screen readers.
    [[nodiscard]] virtual HWND Window() const noexcept { return Input(); }

    // What it needs for its present texts; also before it is made.
    [[nodiscard]] virtual LayoutItem Needs() const = 0;
    // Makes the Windows controls the first time; before, there are none.
    virtual void Place(const RECT& place) = 0;
    // The window's density has changed, and with it the surface; all will be placed again.
    virtual void Rescale() {}
    // Shows what has changed in the control, once it is made.
    virtual void Update() = 0;

    // A WM_COMMAND or WM_NOTIFY of the input control. `answer` is what Windows wants to know.
    virtual Event OnCommand(WORD code)
    {
        static_cast<void>(code);
        return Event::None;
    }
    virtual Event OnNotify(NMHDR& notification, LRESULT& answer)
    {
        static_cast<void>(notification);
        static_cast<void>(answer);
        return Event::None;
    }

protected:
    explicit ControlView(ui::Control& control)
        : m_control(control)
    {
    }

private:
    ui::Control& m_control;
};

// `id` identifies the input control within its window. Within a group, the arrow keys move.
[[nodiscard]] std::unique_ptr<ControlView> MakeControlView(ui::Control& control, const Surface& surface, int id,
                                                           bool startsGroup);

} // namespace vellumo::windows
