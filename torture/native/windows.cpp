#include "torture/native/windows.h"

#include "host/fault.h"
#include "torture/outside_call.h"

#include <exception>
#include <utility>

namespace vellumo::torture
{
namespace
{

// Stands before a form of the library's. As with a real window, what escapes from the form closes it, and reaches
// whoever showed it.
class Shell final : public ui::Form, private ui::FormView
{
public:
    explicit Shell(ui::Form& form)
        : Form(form.Title())
        , m_form(form)
    {
        Work([&] { m_form.Load(); });
        m_controls = form.Controls();
        m_designSize = form.DesignSize();
        m_initialFocus = form.InitialFocus();
        m_form.Attach(this);
    }
    ~Shell() override { m_form.Attach(nullptr); }
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;

    void RethrowEscaped() const
    {
        if (m_escaped)
        {
            std::rethrow_exception(m_escaped);
        }
    }

    void Activated() override
    {
        Work([&] { m_form.Activated(); });
    }
    void Clicked(ui::Control& control) override
    {
        Work([&] { m_form.Clicked(control); });
    }
    void Changed(ui::Control& control) override
    {
        Work([&] { m_form.Changed(control); });
    }
    void FrameClosed() override
    {
        Work([&] { m_form.FrameClosed(); });
    }
    [[nodiscard]] bool ClosesByFrame() const noexcept override { return m_form.ClosesByFrame(); }

private:
    template <class Event>
    void Work(Event&& event)
    {
        const InLibrary work;
        try
        {
            std::forward<Event>(event)();
        }
        catch (...)
        {
            m_escaped = std::current_exception();
        }
        if (m_form.IsClosed() || m_escaped)
        {
            Close();
        }
    }

    void Refresh() override
    {
        const OutsideCall call(Kind::Draw);
        call.FailIfDue();
        RefreshView();
    }
    void ProcessMessages() override
    {
        const OutsideCall call(Kind::Draw);
        call.FailIfDue();
        View()->ProcessMessages();
    }
    void Focus(const ui::Control& control) override
    {
        const OutsideCall call;
        Form::Focus(control);
    }

    ui::Form& m_form;
    std::exception_ptr m_escaped;
};

class Desktop final : public ui::Desktop
{
public:
    explicit Desktop(std::unique_ptr<ui::Desktop> desktop)
        : m_desktop(std::move(desktop))
    {
    }

    void ShowModal(ui::Form& form) override
    {
        const OutsideCall call(Kind::Window);
        call.FailIfDue();
        Shell shell(form);
        if (!shell.IsClosed())
        {
            m_desktop->ShowModal(shell);
        }
        shell.RethrowEscaped();
    }
    [[nodiscard]] std::optional<std::string> AskFile(const std::string& title, const std::string& filter) override
    {
        const OutsideCall call;
        return m_desktop->AskFile(title, filter);
    }

private:
    // A box that cannot be shown is answered as one that was closed.
    ui::Answer ShowBox(const ui::Prompt& prompt) override
    {
        const OutsideCall call(Kind::Window);
        return call.Fails() ? ClosedAnswer(prompt.buttons) : m_desktop->Show(prompt);
    }

    static ui::Answer ClosedAnswer(ui::Buttons buttons)
    {
        switch (buttons)
        {
        case ui::Buttons::Ok:
            return ui::Answer::Ok;
        case ui::Buttons::YesNo:
            return ui::Answer::No;
        default:
            return ui::Answer::Cancel;
        }
    }

    std::unique_ptr<ui::Desktop> m_desktop;
};

} // namespace

std::unique_ptr<ui::Desktop> Tortured(std::unique_ptr<ui::Desktop> desktop)
{
    return std::make_unique<Desktop>(std::move(desktop));
}

} // namespace vellumo::torture
