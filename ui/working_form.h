// What the windows share that stay on screen while a caller's job runs: the job is the handler of their one
// activation. The first time the window becomes active the handler is run, with the window on screen; then the window
// closes itself, whatever came of it. What the handler lets escape is passed over and leaves the result as it was.
// Used once.
#pragma once

#include "ui/form.h"

#include <any>

namespace vellumo::ui
{

class WorkingForm : public Form
{
public:
    // What the handler filled in; empty when it set nothing.
    [[nodiscard]] const std::any& Result() const noexcept { return m_result; }
    // What the handler is to receive; it gets a copy.
    [[nodiscard]] std::any& Parameters() noexcept { return m_parameters; }

    void Activated() final;
    // The job cannot be broken off: closing by the frame does nothing.
    void FrameClosed() final {}
    [[nodiscard]] bool ClosesByFrame() const noexcept final { return false; }

protected:
    using Form::Form;

    virtual void RaiseOnActivate(const std::any& parameters, std::any& result) = 0;

private:
    bool m_activationPending = true;
    std::any m_parameters;
    std::any m_result;
};

} // namespace vellumo::ui
