#include "tests/support/fake_desktop.h"

namespace vellumo::tests
{

ui::Answer FakeDesktop::ShowBox(const ui::Prompt& prompt)
{
    prompts.push_back(prompt);
    if (answers.empty())
    {
        return ui::Answer::Ok;
    }
    const ui::Answer answer = answers.front();
    answers.pop_front();
    return answer;
}

void FakeDesktop::ShowModal(ui::Form& form)
{
    if (showWindow)
    {
        showWindow(form);
    }
    else
    {
        form.Activated();
    }
}

std::optional<std::string> FakeDesktop::AskFile(const std::string&, const std::string&)
{
    return file;
}

std::string FakeDesktop::Told() const
{
    std::string told;
    for (const ui::Prompt& prompt : prompts)
    {
        told += prompt.title + ": " + prompt.text + '\n';
    }
    return told;
}

FakeView::FakeView(ui::Form& form)
    : m_form(form)
{
    form.Attach(this);
}

FakeView::~FakeView()
{
    m_form.Attach(nullptr);
}

} // namespace vellumo::tests
