#include "player/native/form_window.h"

#include "player/controls.h"

#include <algorithm>
#include <cctype>
#include <variant>

namespace vellumo::player
{
namespace
{

char Upper(char c)
{
    return static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
}

char AccessKey(const std::string& caption)
{
    const auto mark = caption.find('&');
    return mark == std::string::npos || mark + 1 == caption.size() ? '\0' : Upper(caption[mark + 1]);
}

std::vector<ui::Answer> AnswersOf(ui::Buttons buttons)
{
    switch (buttons)
    {
    case ui::Buttons::Ok:
        return {ui::Answer::Ok};
    case ui::Buttons::YesNo:
        return {ui::Answer::Yes, ui::Answer::No};
    case ui::Buttons::YesNoCancel:
        return {ui::Answer::Yes, ui::Answer::No, ui::Answer::Cancel};
    case ui::Buttons::RetryCancel:
        return {ui::Answer::Retry, ui::Answer::Cancel};
    }
    return {};
}

// What there is to see of each kind of control, besides its caption.
struct See
{
    ControlSeen operator()(const ui::Label*) const { return Of(ControlKind::Label); }
    ControlSeen operator()(const ui::TextBox* box) const
    {
        ControlSeen seen = Of(ControlKind::TextBox);
        seen.value = box->value;
        return seen;
    }
    ControlSeen operator()(const ui::CheckBox* box) const { return Toggle(box->checked); }
    ControlSeen operator()(const ui::OptionButton* option) const { return Toggle(option->selected); }
    ControlSeen operator()(const ui::ComboBox* list) const
    {
        ControlSeen seen = Of(ControlKind::List);
        seen.entries = list->entries;
        seen.selected = list->index < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(list->index));
        return seen;
    }
    ControlSeen operator()(const ui::Grid* grid) const
    {
        ControlSeen seen = Of(ControlKind::Grid);
        std::transform(grid->columns.begin(), grid->columns.end(), std::back_inserter(seen.columns),
                       [](const ui::Column& column) { return column.caption; });
        seen.rowCount = grid->rows.size();
        seen.selected = grid->selected;
        return seen;
    }
    ControlSeen operator()(const ui::ProgressBar* bar) const
    {
        ControlSeen seen = Of(ControlKind::ProgressBar);
        seen.position = bar->value;
        seen.maximum = bar->maximum;
        return seen;
    }
    ControlSeen operator()(const ui::Button* button) const
    {
        ControlSeen seen = Of(ControlKind::Button);
        seen.isDefault = button->isDefault;
        return seen;
    }

private:
    static ControlSeen Of(ControlKind kind)
    {
        ControlSeen seen;
        seen.kind = kind;
        return seen;
    }
    static ControlSeen Toggle(bool on)
    {
        ControlSeen seen = Of(ControlKind::Toggle);
        seen.on = on;
        return seen;
    }
};

ControlSeen Seen(ui::Control& control)
{
    ControlSeen seen = std::visit(See(), control.Actual());
    seen.caption = seen.kind == ControlKind::Label ? control.text : WithoutAccessKey(control.text);
    seen.enabled = control.enabled;
    return seen;
}

// The visible control of that kind at that place; null when it is disabled and no hand could use it.
ui::Control* Usable(const ui::Form& form, ControlKind kind, std::size_t place)
{
    for (auto* const control : form.Controls())
    {
        if (control->visible && Seen(*control).kind == kind && place-- == 0)
        {
            return control->enabled ? control : nullptr;
        }
    }
    throw std::out_of_range("the window has no such control");
}

template <class Kind>
Kind* Usable(const ui::Form& form, ControlKind kind, std::size_t place)
{
    auto* const control = Usable(form, kind, place);
    return control == nullptr ? nullptr : ui::As<Kind>(*control);
}

} // namespace

std::vector<ControlSeen> PromptWindow::Controls() const
{
    std::vector<ControlSeen> buttons;
    for (const auto answer : AnswersOf(m_prompt.buttons))
    {
        auto& button = buttons.emplace_back();
        button.kind = ControlKind::Button;
        button.answer = answer;
        button.isDefault = static_cast<int>(buttons.size()) == m_prompt.defaultButton;
    }
    return buttons;
}

void PromptWindow::Press(std::size_t button)
{
    m_answer = AnswersOf(m_prompt.buttons).at(button);
}

bool PromptWindow::Key(const std::string& key)
{
    if (key == "Enter")
    {
        Press(static_cast<std::size_t>(m_prompt.defaultButton) - 1);
    }
    else if (key == "Escape")
    {
        CloseByFrame();
    }
    return key == "Enter" || key == "Escape";
}

// A box without a button that takes nothing back has no way out but its buttons.
void PromptWindow::CloseByFrame()
{
    const auto answers = AnswersOf(m_prompt.buttons);
    for (const auto way : {ui::Answer::Ok, ui::Answer::Cancel})
    {
        if (std::find(answers.begin(), answers.end(), way) != answers.end())
        {
            m_answer = way;
        }
    }
}

std::vector<ControlSeen> FormWindow::Controls() const
{
    std::vector<ControlSeen> seen;
    for (auto* const control : m_form.Controls())
    {
        if (control->visible)
        {
            seen.push_back(Seen(*control));
        }
    }
    return seen;
}

CellSeen FormWindow::Cell(std::size_t grid, std::size_t row, std::size_t column) const
{
    for (auto* const control : m_form.Controls())
    {
        const auto* const found = ui::As<ui::Grid>(*control);
        if (found != nullptr && found->visible && grid-- == 0)
        {
            const auto& cell = found->rows.at(row).at(column);
            return {cell.text, cell.foreground, cell.background, cell.image};
        }
    }
    return {};
}

void FormWindow::Press(std::size_t button)
{
    if (auto* const pressed = Usable(m_form, ControlKind::Button, button))
    {
        m_form.Clicked(*pressed);
    }
}

void FormWindow::SelectRow(std::size_t grid, std::size_t row)
{
    if (auto* const chosen = Usable<ui::Grid>(m_form, ControlKind::Grid, grid))
    {
        chosen->selected = row;
        m_form.Changed(*chosen);
    }
}

void FormWindow::DoubleClickRow(std::size_t grid, std::size_t row)
{
    SelectRow(grid, row);
    if (auto* const chosen = Usable(m_form, ControlKind::Grid, grid))
    {
        m_form.Clicked(*chosen);
    }
}

void FormWindow::Type(std::size_t textBox, const std::string& text)
{
    if (auto* const box = Usable<ui::TextBox>(m_form, ControlKind::TextBox, textBox))
    {
        box->value = text;
        m_form.Changed(*box);
    }
}

void FormWindow::SetToggle(std::size_t toggle, bool on)
{
    auto* const box = Usable<ui::CheckBox>(m_form, ControlKind::Toggle, toggle);
    auto* const option = Usable<ui::OptionButton>(m_form, ControlKind::Toggle, toggle);
    if (box != nullptr && box->checked != on)
    {
        box->checked = on;
        m_form.Clicked(*box);
    }
    if (option != nullptr && on)
    {
        m_form.Select(*option);
        m_form.Clicked(*option);
    }
}

void FormWindow::ChooseEntry(std::size_t list, std::size_t entry)
{
    if (auto* const chosen = Usable<ui::ComboBox>(m_form, ControlKind::List, list))
    {
        chosen->index = static_cast<int>(entry);
        m_form.Changed(*chosen);
    }
}

bool FormWindow::Key(const std::string& key)
{
    const bool alt = key.size() == 5 && key.starts_with("Alt+");
    for (auto* const control : m_form.Controls())
    {
        auto* const button = ui::As<ui::Button>(*control);
        if (button != nullptr && button->visible && button->enabled &&
            ((key == "Enter" && button->isDefault) || (key == "Escape" && button->isCancel) ||
             (alt && AccessKey(button->text) == Upper(key.back()))))
        {
            m_form.Clicked(*button);
            return true;
        }
    }
    return false;
}

} // namespace vellumo::player
