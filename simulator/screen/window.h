// A window as the operator sees it, and what the operator can do to it. The player reads and works windows only through
// this, so that one scenario checks the same things natively (windows as state) and on Windows (the real ones). What it
// shows are controls as the library makes its own windows of: natively these very ones, on Windows others that say what
// the real ones say.
//
// Windows is the harder target, and it shapes the contract: the robot there works from a timer inside the window's
// own modal loop, on the same thread. So the player is a step machine. Each call of `Operator::OnScreen` looks at the
// window or does one thing to it and returns; what it did may take effect only later.
#pragma once

#include "ui/controls.h"
#include "ui/prompt.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vellumo::screen
{

enum class WindowKind
{
    Box, // its buttons read "Yes", "No" …, whatever the system's language shows
    Form,
    FileDialog // the platform's own for choosing a file to open
};

class Window
{
public:
    virtual ~Window() = default;

    // A number that no other window of this run has had.
    [[nodiscard]] std::uint64_t Id() const noexcept { return m_id; }
    [[nodiscard]] WindowKind Kind() const noexcept { return m_kind; }
    [[nodiscard]] virtual std::string Title() const = 0;
    // Of a box: its icon, and its text with lines joined by CR LF.
    [[nodiscard]] ui::Icon Icon() const noexcept { return m_icon; }
    [[nodiscard]] const std::string& Text() const noexcept { return m_text; }
    // The controls of one kind that can be seen, top to bottom and then left to right. Good as long as the window. The
    // rows of a grid are counted only; thousands are possible, hence `Cell`.
    template <class Kind>
    [[nodiscard]] std::vector<Kind*> All() const
    {
        std::vector<Kind*> all;
        for (auto* const control : m_controls)
        {
            if (auto* const found = ui::As<Kind>(*control); found != nullptr && found->visible)
            {
                all.push_back(found);
            }
        }
        return all;
    }
    // The one that has the keyboard; null when none of them has it.
    [[nodiscard]] virtual ui::Control* Keyboard() const = 0;
    [[nodiscard]] virtual ui::Cell Cell(const ui::Grid& grid, std::size_t row, std::size_t column) const = 0;

    // Actions, on an enabled control of this window. Each is started and may take effect after its return.
    // A button, check box or option.
    virtual void Press(ui::Control& control) = 0;
    // An entry of a list or a row of a grid.
    virtual void Select(ui::Control& control, std::size_t place) = 0;
    virtual void DoubleClick(ui::Grid& grid, std::size_t row) = 0;
    // Replaces the content of a text box, as typing does: the form hears of it.
    virtual void Type(ui::TextBox& box, const std::string& text) = 0;
    // One key or combination at the control that has the keyboard: "Tab", "Shift+Tab", "Enter", "Escape", "Space",
    // "Up", "Down", "Home", "End", "Alt+C", or a single character. False where the target has no such key, and then
    // nothing has happened.
    virtual bool Key(const std::string& key) = 0;
    virtual void CloseByFrame() = 0;
    // In a file dialog: names the file and opens it; "" cancels.
    virtual void ChooseFile(const std::filesystem::path& file) = 0;

protected:
    std::uint64_t m_id = 0;
    WindowKind m_kind = WindowKind::Form;
    ui::Icon m_icon = ui::Icon::None;
    std::string m_text;
    std::vector<ui::Control*> m_controls;
};

// Whoever sits in front of the screen. Nothing escapes from here.
class Operator
{
public:
    virtual ~Operator() = default;

    // `window` is the one on top, drawn, enabled and waiting. Called again and again while it stays open; never again
    // before the messages of the action just started have been dispatched.
    virtual void OnScreen(Window& window) noexcept = 0;

    // `window` is at work and waits for nobody; it has a progress bar. Called whenever the target can look at it.
    virtual void OnBusy(Window& window) noexcept { static_cast<void>(window); }
};

} // namespace vellumo::screen
