// Prompts and forms of the library as the windows that the player sees, natively: nothing is drawn, the state behind
// the window is what there is to see.
#pragma once

#include "player/screen.h"
#include "ui/form.h"
#include "ui/prompt.h"

namespace vellumo::player
{

class NativeWindow : public Window
{
public:
    NativeWindow(std::uint64_t id, WindowKind kind, std::string title)
        : m_id(id)
        , m_kind(kind)
        , m_title(std::move(title))
    {
    }
    [[nodiscard]] std::uint64_t Id() const final { return m_id; }
    [[nodiscard]] WindowKind Kind() const final { return m_kind; }
    [[nodiscard]] std::string Title() const final { return m_title; }

private:
    std::uint64_t m_id;
    WindowKind m_kind;
    std::string m_title;
};

class PromptWindow final : public NativeWindow
{
public:
    PromptWindow(std::uint64_t id, const ui::Prompt& prompt)
        : NativeWindow(id, WindowKind::Box, prompt.title)
        , m_prompt(prompt)
    {
    }

    // Empty as long as nothing has been pressed.
    [[nodiscard]] std::optional<ui::Answer> Answered() const noexcept { return m_answer; }

    [[nodiscard]] ui::Icon Icon() const override { return m_prompt.icon; }
    [[nodiscard]] std::string Text() const override { return m_prompt.text; }
    [[nodiscard]] std::vector<ControlSeen> Controls() const override;
    void Press(std::size_t button) override;
    bool Key(const std::string& key) override;
    void CloseByFrame() override;

private:
    const ui::Prompt& m_prompt;
    std::optional<ui::Answer> m_answer;
};

class FileWindow final : public NativeWindow
{
public:
    FileWindow(std::uint64_t id, std::string title)
        : NativeWindow(id, WindowKind::FileDialog, std::move(title))
    {
    }

    // Empty as long as nothing has been chosen; "" when cancelled.
    [[nodiscard]] const std::optional<std::filesystem::path>& Chosen() const noexcept { return m_chosen; }

    void CloseByFrame() override { m_chosen = std::filesystem::path(); }
    void ChooseFile(const std::filesystem::path& file) override { m_chosen = file; }

private:
    std::optional<std::filesystem::path> m_chosen;
};

class FormWindow final : public NativeWindow
{
public:
    FormWindow(std::uint64_t id, ui::Form& form)
        : NativeWindow(id, WindowKind::Form, form.Title())
        , m_form(form)
    {
    }

    [[nodiscard]] std::vector<ControlSeen> Controls() const override;
    [[nodiscard]] CellSeen Cell(std::size_t grid, std::size_t row, std::size_t column) const override;
    void Press(std::size_t button) override;
    void SelectRow(std::size_t grid, std::size_t row) override;
    void DoubleClickRow(std::size_t grid, std::size_t row) override;
    void Type(std::size_t textBox, const std::string& text) override;
    void SetToggle(std::size_t toggle, bool on) override;
    void ChooseEntry(std::size_t list, std::size_t entry) override;
    // Only the keys that stand for a button: Enter, Escape, Alt and an access key.
    bool Key(const std::string& key) override;
    void CloseByFrame() override { m_form.FrameClosed(); }

private:
    ui::Form& m_form;
};

} // namespace vellumo::player
