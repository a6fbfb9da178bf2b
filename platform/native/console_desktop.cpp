#include "platform/native/console_desktop.h"

#include "host/text.h"
#include "platform/native/console_form.h"

#include <array>
#include <istream>
#include <ostream>
#include <vector>

namespace vellumo::native
{
namespace
{

struct Choice
{
    char key;
    const char* caption;
    ui::Answer answer;
};

const std::vector<Choice>& ChoicesOf(ui::Buttons buttons)
{
    static const std::vector<Choice> ok = {{'o', "OK", ui::Answer::Ok}};
    static const std::vector<Choice> yesNo = {{'s', "Sì", ui::Answer::Yes}, {'n', "No", ui::Answer::No}};
    static const std::vector<Choice> yesNoCancel = {
        {'s', "Sì", ui::Answer::Yes}, {'n', "No", ui::Answer::No}, {'a', "Annulla", ui::Answer::Cancel}};
    static const std::vector<Choice> retryCancel = {{'r', "Riprova", ui::Answer::Retry},
                                                    {'a', "Annulla", ui::Answer::Cancel}};
    switch (buttons)
    {
    case ui::Buttons::YesNo:
        return yesNo;
    case ui::Buttons::YesNoCancel:
        return yesNoCancel;
    case ui::Buttons::RetryCancel:
        return retryCancel;
    case ui::Buttons::Ok:
        break;
    }
    return ok;
}

const char* Mark(ui::Icon icon)
{
    switch (icon)
    {
    case ui::Icon::Critical:
        return "(X) ";
    case ui::Icon::Exclamation:
        return "(!) ";
    case ui::Icon::Information:
        return "(i) ";
    case ui::Icon::None:
        break;
    }
    return "";
}

} // namespace

ui::Answer ConsoleDesktop::ShowBox(const ui::Prompt& prompt)
{
    const std::vector<Choice>& choices = ChoicesOf(prompt.buttons);
    const auto defaultIndex = static_cast<std::size_t>(prompt.defaultButton - 1);
    const Choice& byDefault = choices.at(defaultIndex < choices.size() ? defaultIndex : 0);
    m_out << "\n=== " << Mark(prompt.icon) << prompt.title << " ===\n" << prompt.text << '\n';
    for (const Choice& choice : choices)
    {
        m_out << " [" << choice.key << "] " << choice.caption << (&choice == &byDefault ? " (Invio)" : "");
    }
    m_out << "\n> " << std::flush;
    for (std::string line; std::getline(m_in, line);)
    {
        if (line.empty())
        {
            return byDefault.answer;
        }
        for (const Choice& choice : choices)
        {
            if (host::Lower(line[0]) == choice.key)
            {
                return choice.answer;
            }
        }
        m_out << "Rispondere con una delle lettere tra parentesi.\n> " << std::flush;
    }
    return choices.back().answer; // Cancel, else No, else Ok
}

void ConsoleDesktop::ShowModal(ui::Form& form)
{
    ConsoleForm(form, m_in, m_out).ShowModal();
}

std::optional<std::string> ConsoleDesktop::AskFile(const std::string& title, const std::string& filter)
{
    m_out << "\n=== " << title << " ===\nFile da aprire - " << filter.substr(0, filter.find('|'))
          << " (vuoto per annullare)\n> " << std::flush;
    std::string path;
    if (!std::getline(m_in, path) || path.empty())
    {
        return std::nullopt;
    }
    return path;
}

} // namespace vellumo::native
