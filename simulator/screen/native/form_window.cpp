#include "simulator/screen/native/form_window.h"

#include "host/fault.h"
#include "host/text.h"

#include <algorithm>
#include <array>
#include <list>
#include <map>

namespace vellumo::screen
{
namespace
{

// A window that nothing closes any more would keep the run from ending.
constexpr int mostLooks = 100000;

const std::map<ui::Buttons, std::vector<ui::Answer>> answersOf = {
    {ui::Buttons::Ok, {ui::Answer::Ok}},
    {ui::Buttons::YesNo, {ui::Answer::Yes, ui::Answer::No}},
    {ui::Buttons::YesNoCancel, {ui::Answer::Yes, ui::Answer::No, ui::Answer::Cancel}},
    {ui::Buttons::RetryCancel, {ui::Answer::Retry, ui::Answer::Cancel}}};

constexpr std::array answerNames = {"OK", "Cancel", "Retry", "Yes", "No"}; // in the order of ui::Answer

char AccessKey(const std::string& caption)
{
    const auto mark = caption.find('&');
    return mark == std::string::npos || mark + 1 == caption.size() ? '\0' : host::Upper(caption[mark + 1]);
}

// A message box as a form of buttons. One without a button that takes nothing back has no way out but its buttons.
class BoxForm final : public ui::Form
{
public:
    explicit BoxForm(const ui::Prompt& prompt)
        : Form(prompt.title)
        , m_answers(answersOf.at(prompt.buttons))
    {
        for (const auto answer : m_answers)
        {
            auto& button = m_buttons.emplace_back(answerNames.at(static_cast<std::size_t>(answer)));
            button.isDefault = static_cast<int>(m_buttons.size()) == prompt.defaultButton;
            button.isCancel = answer == ui::Answer::Ok || answer == ui::Answer::Cancel;
            m_controls.push_back(&button);
        }
    }

    [[nodiscard]] ui::Answer Result() const noexcept { return m_result; }

    void Clicked(ui::Control& control) override
    {
        const auto place = std::find(m_controls.begin(), m_controls.end(), &control) - m_controls.begin();
        m_result = m_answers.at(static_cast<std::size_t>(place));
        Close();
    }
    void FrameClosed() override
    {
        for (auto& button : m_buttons)
        {
            if (button.isCancel)
            {
                Clicked(button);
            }
        }
    }

private:
    std::vector<ui::Answer> m_answers;
    std::list<ui::Button> m_buttons; // controls keep their place
    ui::Answer m_result = ui::Answer::Cancel;
};

class FileForm final : public ui::Form
{
public:
    explicit FileForm(const std::string& title)
        : Form(title)
    {
    }
    void Choose(const std::filesystem::path& file)
    {
        chosen = file.string();
        Close();
    }

    std::string chosen; // "" when cancelled
};

} // namespace

Window* FormScreen::Topmost()
{
    return m_windows.empty() ? nullptr : m_windows.back();
}

FormWindow::FormWindow(FormScreen& screen, ui::Form& form)
    : m_screen(screen)
    , m_form(form)
    , m_keyboard(form.InitialFocus())
{
    m_id = ++screen.m_lastId;
    m_kind = dynamic_cast<FileForm*>(&form) == nullptr ? WindowKind::Form : WindowKind::FileDialog;
    m_controls = form.Controls();
    m_screen.m_windows.push_back(this);
    m_form.Attach(this);
}

FormWindow::FormWindow(FormScreen& screen, ui::Form& form, const ui::Prompt& prompt)
    : FormWindow(screen, form)
{
    m_kind = WindowKind::Box;
    m_icon = prompt.icon;
    m_text = prompt.text;
    m_keyboard = All<ui::Button>().at(static_cast<std::size_t>(prompt.defaultButton) - 1);
}

FormWindow::~FormWindow()
{
    m_form.Attach(nullptr);
    m_screen.m_windows.pop_back();
}

void FormWindow::Show()
{
    m_form.Activated();
    for (int looks = 0; !m_form.IsClosed(); ++looks)
    {
        if (looks == mostLooks)
        {
            throw host::Fault("Nessuno chiude la finestra.");
        }
        m_screen.m_operator.OnScreen(*m_screen.m_windows.back());
    }
}

// A control that was disabled leaves the keyboard to the next one that can have it.
ui::Control* FormWindow::Keyboard() const
{
    const auto at = std::find(m_controls.begin(), m_controls.end(), m_keyboard);
    const auto found = std::find_if(at == m_controls.end() ? m_controls.begin() : at, m_controls.end(),
                                    [](ui::Control* each)
                                    {
                                        return each->visible && each->enabled && ui::As<ui::Label>(*each) == nullptr &&
                                               ui::As<ui::ProgressBar>(*each) == nullptr;
                                    });
    return found == m_controls.end() ? nullptr : *found;
}

ui::Cell FormWindow::Cell(const ui::Grid& grid, std::size_t row, std::size_t column) const
{
    return grid.rows.at(row).at(column);
}

void FormWindow::Press(ui::Control& control)
{
    m_keyboard = &control;
    if (auto* const box = ui::As<ui::CheckBox>(control))
    {
        box->checked = !box->checked;
    }
    if (const auto* const option = ui::As<ui::OptionButton>(control))
    {
        m_form.Select(*option);
    }
    m_form.Clicked(control);
}

void FormWindow::Select(ui::Control& control, std::size_t place)
{
    if (auto* const grid = ui::As<ui::Grid>(control))
    {
        grid->selected = place;
    }
    if (auto* const list = ui::As<ui::ComboBox>(control))
    {
        list->index = static_cast<int>(place);
    }
    m_form.Changed(control);
}

void FormWindow::DoubleClick(ui::Grid& grid, std::size_t row)
{
    Select(grid, row);
    m_form.Clicked(grid);
}

void FormWindow::Type(ui::TextBox& box, const std::string& text)
{
    m_keyboard = &box;
    box.value = text;
    m_form.Changed(box);
}

bool FormWindow::Key(const std::string& key)
{
    const bool alt = key.size() == 5 && key.starts_with("Alt+");
    auto* const keyboard = Keyboard();
    const bool onButton = keyboard != nullptr && ui::As<ui::Button>(*keyboard) != nullptr;
    for (auto* const button : All<ui::Button>())
    {
        const bool takesEnter = onButton ? button == keyboard : button->isDefault;
        if (button->enabled && ((key == "Enter" && takesEnter) || (key == "Escape" && button->isCancel) ||
                                (alt && AccessKey(button->text) == host::Upper(key.back()))))
        {
            m_form.Clicked(*button);
            return true;
        }
    }
    return false;
}

void FormWindow::ChooseFile(const std::filesystem::path& file)
{
    dynamic_cast<FileForm&>(m_form).Choose(file);
}

void ScriptedDesktop::ShowModal(ui::Form& form)
{
    if (m_screen.m_refuses)
    {
        throw host::Fault("Non è possibile aprire la finestra \"" + form.Title() + "\".");
    }
    FormWindow(m_screen, form).Show();
}

ui::Answer ScriptedDesktop::ShowBox(const ui::Prompt& prompt)
{
    BoxForm form(prompt);
    FormWindow(m_screen, form, prompt).Show();
    return form.Result();
}

std::optional<std::string> ScriptedDesktop::AskFile(const std::string& title, const std::string&)
{
    FileForm form(title);
    FormWindow(m_screen, form).Show();
    return form.chosen.empty() ? std::nullopt : std::optional(form.chosen);
}

} // namespace vellumo::screen
