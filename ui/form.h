// A window as state and decisions, without a toolkit. A form lists its controls; a view draws them, writes the
// operator's input into them and tells the form, which decides what happens. The form never waits: it changes its
// controls, shows prompts through the Desktop, and says when it is closed. After each event the view draws what the
// form has changed.
//
// The caller owns the form and reads its result after `Desktop::ShowModal` has returned. No member of a form lets a
// fault escape into a view, except where a derived class says so; what escapes all the same closes the window and
// reaches the caller of `ShowModal`.
#pragma once

#include "ui/controls.h"

#include <string>
#include <vector>

namespace vellumo::ui
{

// What a form may ask of the view that is showing it.
class FormView
{
public:
    virtual ~FormView() = default;

    // Draws what has changed since the last call, at once.
    virtual void Refresh() = 0;
    // Draws it soon: at most some twenty times a second, so that a long job may report as often as it likes. A report
    // that follows the one before it quickly may wait for a later one to be drawn, and stays undrawn while the job
    // blocks meanwhile. The last state is drawn at the latest before a box or another window opens.
    virtual void RefreshSoon() { Refresh(); }
    // Lets the platform process its pending messages, so that the window repaints and answers.
    virtual void ProcessMessages() = 0;
    // Gives the keyboard to a control.
    virtual void Focus(const Control& control) { static_cast<void>(control); }
};

struct Size
{
    int width = 0; // twips
    int height = 0;
};

class Form
{
public:
    virtual ~Form() = default;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    [[nodiscard]] const std::string& Title() const noexcept { return m_title; }
    [[nodiscard]] const std::vector<Control*>& Controls() const noexcept { return m_controls; }
    // Inner size when the window opens; a form with a grid may be resized by the operator, not below this.
    [[nodiscard]] Size DesignSize() const noexcept { return m_designSize; }
    // The control that has the keyboard when the window opens; null for the first one that can have it.
    [[nodiscard]] Control* InitialFocus() const noexcept { return m_initialFocus; }
    [[nodiscard]] bool IsClosed() const noexcept { return m_closed; }

    // The operator chose this option button, so the others are not chosen any more. For views, before `Clicked`.
    void Select(const OptionButton& option) const;

    // A view attaches itself before it draws and detaches (null) when its window is gone.
    void Attach(FormView* view) noexcept { m_view = view; }

    // Raised before the window is drawn for the first time; a caller may do it earlier. Only the first call counts.
    virtual void Load() {}
    // Raised on every activation of the window, the first time once it is drawn.
    virtual void Activated() {}
    // The operator pressed a button, ticked a check box, chose an option button, or double-clicked a row of a grid.
    // The control already holds its new state. Enter presses the default button.
    virtual void Clicked(Control& control) { static_cast<void>(control); }
    // The operator typed into a text box, chose a list entry or moved to another grid row. The control already holds
    // its new state.
    virtual void Changed(Control& control) { static_cast<void>(control); }
    // The operator closed the window by its frame.
    virtual void FrameClosed() { Close(); }
    // Whether closing by the frame does anything; a view that can shows it.
    [[nodiscard]] virtual bool ClosesByFrame() const noexcept { return true; }

protected:
    explicit Form(std::string title)
        : m_title(std::move(title))
    {
    }

    void Close() noexcept { m_closed = true; }
    [[nodiscard]] FormView* View() const noexcept { return m_view; }
    void RefreshView();
    void Focus(const Control& control);

    std::string m_title;
    std::vector<Control*> m_controls; // members of the derived class
    Size m_designSize;
    Control* m_initialFocus = nullptr;

private:
    FormView* m_view = nullptr;
    bool m_closed = false;
};

} // namespace vellumo::ui
