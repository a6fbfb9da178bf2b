// Windows of the library as the operator sees them, natively: nothing is drawn, the state behind the window is what
// there is to see.
#pragma once

#include "simulator/screen/screen.h"
#include "ui/desktop.h"

#include <optional>

namespace vellumo::screen
{

class FormWindow;

class FormScreen final : public Screen
{
public:
    // `anOperator` outlives the screen.
    explicit FormScreen(Operator& anOperator)
        : m_operator(anOperator)
    {
    }

    [[nodiscard]] Window* Topmost() override;
    void RefuseWindows() override { m_refuses = true; }
    bool TakePicture(const std::filesystem::path&) override { return false; }

private:
    friend class FormWindow;
    friend class ScriptedDesktop;

    Operator& m_operator;
    std::vector<FormWindow*> m_windows; // that are open; the last is on top
    std::uint64_t m_lastId = 0;
    bool m_refuses = false; // to make windows of forms
};

// On the screen from its making to its end.
class FormWindow final : public Window, private ui::FormView
{
public:
    FormWindow(FormScreen& screen, ui::Form& form);
    // Of a box.
    FormWindow(FormScreen& screen, ui::Form& form, const ui::Prompt& prompt);
    ~FormWindow() override;
    FormWindow(const FormWindow&) = delete;
    FormWindow& operator=(const FormWindow&) = delete;

    // Lets the operator at it until the form is closed.
    void Show();

    [[nodiscard]] std::string Title() const override { return m_form.Title(); }
    [[nodiscard]] ui::Control* Keyboard() const override;
    [[nodiscard]] ui::Cell Cell(const ui::Grid& grid, std::size_t row, std::size_t column) const override;
    void Press(ui::Control& control) override;
    void Select(ui::Control& control, std::size_t place) override;
    void DoubleClick(ui::Grid& grid, std::size_t row) override;
    void Type(ui::TextBox& box, const std::string& text) override;
    // Only the keys that stand for a button: Enter, Escape, Alt and an access key.
    bool Key(const std::string& key) override;
    void CloseByFrame() override { m_form.FrameClosed(); }
    void ChooseFile(const std::filesystem::path& file) override;

private:
    void Refresh() override { m_screen.m_operator.OnBusy(*this); }
    void ProcessMessages() override { m_screen.m_operator.OnBusy(*this); }
    void Focus(const ui::Control& control) override { m_keyboard = &control; }

    FormScreen& m_screen;
    ui::Form& m_form;
    const ui::Control* m_keyboard; // who got it last
};

// Shows them all on the screen.
class ScriptedDesktop final : public ui::Desktop
{
public:
    explicit ScriptedDesktop(FormScreen& screen)
        : m_screen(screen)
    {
    }

    ui::Answer ShowBox(const ui::Prompt& prompt) override;
    void ShowModal(ui::Form& form) override;
    [[nodiscard]] std::optional<std::string> AskFile(const std::string& title, const std::string& filter) override;

private:
    FormScreen& m_screen;
};

} // namespace vellumo::screen
