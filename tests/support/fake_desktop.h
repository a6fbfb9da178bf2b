// The desktop of all tests, with nobody in front of it: it answers boxes from a list and keeps them, and lets the work
// of each window run at once. What else is done with a window is the test's to say.
#pragma once

#include "host/fault.h"
#include "ui/desktop.h"
#include "ui/form.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vellumo::tests
{

class FakeDesktop final : public ui::Desktop
{
public:
    void ShowModal(ui::Form& form) override;
    std::optional<std::string> AskFile(const std::string& title, const std::string& filter) override;

    // Everything the operator was told, a line each: "title: text".
    [[nodiscard]] std::string Told() const;

    std::deque<ui::Answer> answers; // OK when there is none left
    std::vector<ui::Prompt> prompts;
    std::optional<std::string> file;                // what the operator chooses
    std::function<void(ui::Form& form)> showWindow; // instead of letting its work run

private:
    ui::Answer ShowBox(const ui::Prompt& prompt) override;
};

// A window's view that notes what is asked of it.
class FakeView final : public ui::FormView
{
public:
    explicit FakeView(ui::Form& form);
    ~FakeView() override;
    FakeView(const FakeView&) = delete;
    FakeView& operator=(const FakeView&) = delete;

    void Refresh() override { calls += 'R'; }
    void RefreshSoon() override { calls += 'S'; }
    void ProcessMessages() override { calls += 'P'; }
    void Focus(const ui::Control& control) override { focus = &control; }

    std::string calls; // in order, one letter each
    const ui::Control* focus = nullptr;

private:
    ui::Form& m_form;
};

// The form's control of that kind whose text begins so; faults when there is none.
template <class Kind>
Kind& Find(const ui::Form& form, const std::string& text)
{
    for (ui::Control* control : form.Controls())
    {
        auto* const found = ui::As<Kind>(*control);
        if (found != nullptr && found->text.starts_with(text))
        {
            return *found;
        }
    }
    throw host::Fault("no control " + text);
}

} // namespace vellumo::tests
