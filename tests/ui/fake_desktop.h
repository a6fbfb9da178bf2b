// A desktop for tests of one form: it answers prompts from a list, remembers them, and notes which control was given
// the keyboard.
#pragma once

#include "host/fault.h"
#include "ui/desktop.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace vellumo::ui
{

class FakeDesktop final : public Desktop
{
public:
    Answer Show(const Prompt& prompt) override
    {
        prompts.push_back(prompt);
        if (answers.empty())
        {
            return Answer::Ok;
        }
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    void ShowModal(Form&) override {}
    std::optional<std::string> AskFile(const std::string&, const std::string&) override { return std::nullopt; }

    std::deque<Answer> answers;
    std::vector<Prompt> prompts;
};

class FakeView final : public FormView
{
public:
    explicit FakeView(Form& form)
        : m_form(form)
    {
        form.Attach(this);
    }
    ~FakeView() override { m_form.Attach(nullptr); }
    FakeView(const FakeView&) = delete;
    FakeView& operator=(const FakeView&) = delete;

    void Refresh() override { calls += 'R'; }
    void RefreshSoon() override { calls += 'S'; }
    void ProcessMessages() override { calls += 'P'; }
    void Focus(const Control& control) override { focus = &control; }

    std::string calls; // in order, one letter each
    const Control* focus = nullptr;

private:
    Form& m_form;
};

// The form's control of that kind whose text begins so; fails the test when there is none.
template <class Kind>
Kind& Find(const Form& form, const std::string& text)
{
    for (Control* control : form.Controls())
    {
        auto* const found = dynamic_cast<Kind*>(control);
        if (found != nullptr && found->text.starts_with(text))
        {
            return *found;
        }
    }
    throw host::Fault("no control " + text);
}

} // namespace vellumo::ui
