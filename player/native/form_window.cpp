#include "player/native/form_window.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace vellumo::player
{
namespace
{

// Without the mark of the access key; "&&" is a plain "&".
std::string WithoutMark(const std::string& caption)
{
    std::string text;
    for (std::size_t i = 0; i < caption.size(); ++i)
    {
        if (caption[i] == '&' && i + 1 < caption.size())
        {
            ++i;
        }
        text += caption[i];
    }
    return text;
}

char AccessKey(const std::string& caption)
{
    const auto mark = caption.find('&');
    return mark == std::string::npos || mark + 1 == caption.size()
               ? '\0'
               : static_cast<char>(std::toupper(static_cast<unsigned char>(caption[mark + 1])));
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

} // namespace

std::vector<ButtonSeen> PromptWindow::Buttons() const
{
    std::vector<ButtonSeen> buttons;
    for (const auto answer : AnswersOf(m_prompt.buttons))
    {
        const bool isDefault = static_cast<int>(buttons.size()) + 1 == m_prompt.defaultButton;
        buttons.push_back({"", answer, isDefault, true});
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
    else
    {
        return false;
    }
    return true;
}

// A box without a button that takes nothing back has no way out but its buttons.
void PromptWindow::CloseByFrame()
{
    const auto answers = AnswersOf(m_prompt.buttons);
    for (const auto way : {ui::Answer::Cancel, ui::Answer::Ok})
    {
        if (std::find(answers.begin(), answers.end(), way) != answers.end())
        {
            m_answer = way;
            return;
        }
    }
}

template <class Kind>
std::vector<Kind*> FormWindow::All() const
{
    std::vector<Kind*> found;
    for (auto* const control : m_form.Controls())
    {
        auto* const wanted = dynamic_cast<Kind*>(control);
        if (wanted != nullptr && wanted->visible)
        {
            found.push_back(wanted);
        }
    }
    return found;
}

template <class Kind>
Kind& FormWindow::At(std::size_t position) const
{
    return *All<Kind>().at(position);
}

std::vector<std::string> FormWindow::Labels() const
{
    std::vector<std::string> labels;
    for (const auto* const label : All<ui::Label>())
    {
        labels.push_back(label->text);
    }
    return labels;
}

std::vector<ButtonSeen> FormWindow::Buttons() const
{
    std::vector<ButtonSeen> buttons;
    for (const auto* const button : All<ui::Button>())
    {
        buttons.push_back({WithoutMark(button->text), std::nullopt, button->isDefault, button->enabled});
    }
    return buttons;
}

// Check boxes and option buttons in one list, in the order of the window.
std::vector<ToggleSeen> FormWindow::Toggles() const
{
    std::vector<ToggleSeen> toggles;
    for (const auto* const control : All<ui::Control>())
    {
        if (const auto* const box = dynamic_cast<const ui::CheckBox*>(control))
        {
            toggles.push_back({WithoutMark(box->text), box->checked, box->enabled});
        }
        else if (const auto* const option = dynamic_cast<const ui::OptionButton*>(control))
        {
            toggles.push_back({WithoutMark(option->text), option->selected, option->enabled});
        }
    }
    return toggles;
}

std::vector<TextBoxSeen> FormWindow::TextBoxes() const
{
    std::vector<TextBoxSeen> boxes;
    for (const auto* const box : All<ui::TextBox>())
    {
        boxes.push_back({WithoutMark(box->text), box->value, box->enabled});
    }
    return boxes;
}

std::vector<ListSeen> FormWindow::Lists() const
{
    std::vector<ListSeen> lists;
    for (const auto* const list : All<ui::ComboBox>())
    {
        lists.push_back({list->entries, list->index, list->enabled});
    }
    return lists;
}

std::vector<ProgressSeen> FormWindow::ProgressBars() const
{
    std::vector<ProgressSeen> bars;
    for (const auto* const bar : All<ui::ProgressBar>())
    {
        bars.push_back({bar->value, bar->maximum});
    }
    return bars;
}

std::vector<GridSeen> FormWindow::Grids() const
{
    std::vector<GridSeen> grids;
    for (const auto* const grid : All<ui::Grid>())
    {
        auto& seen = grids.emplace_back();
        for (const auto& column : grid->columns)
        {
            seen.columns.push_back(column.caption);
        }
        seen.rowCount = grid->rows.size();
        seen.selected = grid->selected;
    }
    return grids;
}

CellSeen FormWindow::Cell(std::size_t grid, std::size_t row, std::size_t column) const
{
    const auto& cell = At<ui::Grid>(grid).rows.at(row).at(column);
    return {cell.text, cell.foreground, cell.background, cell.image};
}

void FormWindow::Press(std::size_t button)
{
    auto& pressed = At<ui::Button>(button);
    if (pressed.enabled)
    {
        m_form.Clicked(pressed);
    }
}

void FormWindow::SelectRow(std::size_t grid, std::size_t row)
{
    auto& chosen = At<ui::Grid>(grid);
    if (chosen.enabled)
    {
        chosen.selected = row;
        m_form.Changed(chosen);
    }
}

void FormWindow::DoubleClickRow(std::size_t grid, std::size_t row)
{
    SelectRow(grid, row);
    auto& chosen = At<ui::Grid>(grid);
    if (chosen.enabled)
    {
        m_form.Clicked(chosen);
    }
}

void FormWindow::Type(std::size_t textBox, const std::string& text)
{
    auto& box = At<ui::TextBox>(textBox);
    if (box.enabled)
    {
        box.value = text;
        m_form.Changed(box);
    }
}

void FormWindow::SetToggle(std::size_t toggle, bool on)
{
    for (auto* const control : All<ui::Control>())
    {
        auto* const box = dynamic_cast<ui::CheckBox*>(control);
        auto* const option = dynamic_cast<ui::OptionButton*>(control);
        if ((box == nullptr && option == nullptr) || toggle-- != 0)
        {
            continue;
        }
        if (box != nullptr && box->enabled && box->checked != on)
        {
            box->checked = on;
            m_form.Clicked(*box);
        }
        if (option != nullptr && option->enabled && on)
        {
            m_form.Select(*option);
            m_form.Clicked(*option);
        }
        return;
    }
}

void FormWindow::ChooseEntry(std::size_t list, int index)
{
    auto& chosen = At<ui::ComboBox>(list);
    if (chosen.enabled)
    {
        chosen.index = index;
        m_form.Changed(chosen);
    }
}

bool FormWindow::PressWhere(bool ui::Button::*flag)
{
    for (auto* const button : All<ui::Button>())
    {
        if (button->*flag && button->enabled)
        {
            m_form.Clicked(*button);
            return true;
        }
    }
    return false;
}

bool FormWindow::Key(const std::string& key)
{
    if (key == "Enter")
    {
        return PressWhere(&ui::Button::isDefault);
    }
    if (key == "Escape")
    {
        return PressWhere(&ui::Button::isCancel);
    }
    constexpr std::string_view alt = "Alt+";
    if (key.size() == alt.size() + 1 && key.substr(0, alt.size()) == alt)
    {
        for (auto* const button : All<ui::Button>())
        {
            if (AccessKey(button->text) == std::toupper(static_cast<unsigned char>(key.back())) && button->enabled)
            {
                m_form.Clicked(*button);
                return true;
            }
        }
    }
    return false;
}

} // namespace vellumo::player
