// Prompts and forms of the library as the windows that the scenario player sees, natively: nothing is drawn, the state
// behind the window is what there is to see.
#pragma once

#include "player/screen.h"
#include "ui/form.h"
#include "ui/prompt.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vellumo::player
{

class PromptWindow final : public Window
{
public:
    PromptWindow(std::uint64_t id, const ui::Prompt& prompt)
        : m_id(id)
        , m_prompt(prompt)
    {
    }

    // Empty as long as nothing has been pressed.
    [[nodiscard]] std::optional<ui::Answer> Answered() const noexcept { return m_answer; }

    [[nodiscard]] std::uint64_t Id() const override { return m_id; }
    [[nodiscard]] WindowKind Kind() const override { return WindowKind::Box; }
    [[nodiscard]] std::string Title() const override { return m_prompt.title; }
    [[nodiscard]] ui::Icon Icon() const override { return m_prompt.icon; }
    [[nodiscard]] std::string Text() const override { return m_prompt.text; }
    [[nodiscard]] std::vector<std::string> Labels() const override { return {}; }
    [[nodiscard]] std::vector<ButtonSeen> Buttons() const override;
    [[nodiscard]] std::vector<ToggleSeen> Toggles() const override { return {}; }
    [[nodiscard]] std::vector<TextBoxSeen> TextBoxes() const override { return {}; }
    [[nodiscard]] std::vector<ListSeen> Lists() const override { return {}; }
    [[nodiscard]] std::vector<ProgressSeen> ProgressBars() const override { return {}; }
    [[nodiscard]] std::vector<GridSeen> Grids() const override { return {}; }
    [[nodiscard]] CellSeen Cell(std::size_t, std::size_t, std::size_t) const override { return {}; }

    void Press(std::size_t button) override;
    void SelectRow(std::size_t, std::size_t) override {}
    void DoubleClickRow(std::size_t, std::size_t) override {}
    void Type(std::size_t, const std::string&) override {}
    void SetToggle(std::size_t, bool) override {}
    void ChooseEntry(std::size_t, int) override {}
    bool Key(const std::string& key) override;
    void CloseByFrame() override;

private:
    std::uint64_t m_id;
    const ui::Prompt& m_prompt;
    std::optional<ui::Answer> m_answer;
};

class FileWindow final : public Window
{
public:
    FileWindow(std::uint64_t id, std::string title)
        : m_id(id)
        , m_title(std::move(title))
    {
    }

    // Empty as long as nothing has been chosen; "" when cancelled.
    [[nodiscard]] const std::optional<std::filesystem::path>& Chosen() const noexcept { return m_chosen; }

    [[nodiscard]] std::uint64_t Id() const override { return m_id; }
    [[nodiscard]] WindowKind Kind() const override { return WindowKind::FileDialog; }
    [[nodiscard]] std::string Title() const override { return m_title; }
    [[nodiscard]] ui::Icon Icon() const override { return ui::Icon::None; }
    [[nodiscard]] std::string Text() const override { return {}; }
    [[nodiscard]] std::vector<std::string> Labels() const override { return {}; }
    [[nodiscard]] std::vector<ButtonSeen> Buttons() const override { return {}; }
    [[nodiscard]] std::vector<ToggleSeen> Toggles() const override { return {}; }
    [[nodiscard]] std::vector<TextBoxSeen> TextBoxes() const override { return {}; }
    [[nodiscard]] std::vector<ListSeen> Lists() const override { return {}; }
    [[nodiscard]] std::vector<ProgressSeen> ProgressBars() const override { return {}; }
    [[nodiscard]] std::vector<GridSeen> Grids() const override { return {}; }
    [[nodiscard]] CellSeen Cell(std::size_t, std::size_t, std::size_t) const override { return {}; }

    void Press(std::size_t) override {}
    void SelectRow(std::size_t, std::size_t) override {}
    void DoubleClickRow(std::size_t, std::size_t) override {}
    void Type(std::size_t, const std::string&) override {}
    void SetToggle(std::size_t, bool) override {}
    void ChooseEntry(std::size_t, int) override {}
    bool Key(const std::string&) override { return false; }
    void CloseByFrame() override { m_chosen = std::filesystem::path(); }
    void ChooseFile(const std::filesystem::path& file) override { m_chosen = file; }

private:
    std::uint64_t m_id;
    std::string m_title;
    std::optional<std::filesystem::path> m_chosen;
};

class FormWindow final : public Window
{
public:
    FormWindow(std::uint64_t id, ui::Form& form)
        : m_id(id)
        , m_form(form)
    {
    }

    [[nodiscard]] std::uint64_t Id() const override { return m_id; }
    [[nodiscard]] WindowKind Kind() const override { return WindowKind::Form; }
    [[nodiscard]] std::string Title() const override { return m_form.Title(); }
    [[nodiscard]] ui::Icon Icon() const override { return ui::Icon::None; }
    [[nodiscard]] std::string Text() const override { return {}; }
    [[nodiscard]] std::vector<std::string> Labels() const override;
    [[nodiscard]] std::vector<ButtonSeen> Buttons() const override;
    [[nodiscard]] std::vector<ToggleSeen> Toggles() const override;
    [[nodiscard]] std::vector<TextBoxSeen> TextBoxes() const override;
    [[nodiscard]] std::vector<ListSeen> Lists() const override;
    [[nodiscard]] std::vector<ProgressSeen> ProgressBars() const override;
    [[nodiscard]] std::vector<GridSeen> Grids() const override;
    [[nodiscard]] CellSeen Cell(std::size_t grid, std::size_t row, std::size_t column) const override;

    void Press(std::size_t button) override;
    void SelectRow(std::size_t grid, std::size_t row) override;
    void DoubleClickRow(std::size_t grid, std::size_t row) override;
    void Type(std::size_t textBox, const std::string& text) override;
    void SetToggle(std::size_t toggle, bool on) override;
    void ChooseEntry(std::size_t list, int index) override;
    // Only the keys that stand for a button: Enter, Escape, Alt and an access key.
    bool Key(const std::string& key) override;
    void CloseByFrame() override { m_form.FrameClosed(); }

private:
    template <class Kind>
    [[nodiscard]] std::vector<Kind*> All() const;
    template <class Kind>
    [[nodiscard]] Kind& At(std::size_t position) const;
    bool PressWhere(bool ui::Button::*flag);

    std::uint64_t m_id;
    ui::Form& m_form;
};

} // namespace vellumo::player
