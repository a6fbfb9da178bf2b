// A window as the operator sees it, and what the operator can do to it. The player reads and works windows only through
// this, so that one scenario checks the same things natively (windows as state) and on Windows (the real ones).
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
#include <optional>
#include <string>
#include <vector>

namespace vellumo::player
{

enum class WindowKind
{
    Box,
    Form,
    FileDialog // the platform's own for choosing a file to open
};

enum class ControlKind
{
    Label,
    Button,
    Toggle, // a check box or an option button
    TextBox,
    List,
    ProgressBar,
    Grid
};

// What a control shows. Captions and labels are as the operator reads them: without the "&" of the access key.
struct ControlSeen
{
    ControlKind kind = ControlKind::Label;
    std::string caption; // of a text box the label that names it, "" when there is none
    bool enabled = true;
    bool isDefault = false;              // of a button
    std::optional<ui::Answer> answer;    // of a box's button: what it gives, whatever its caption reads
    bool on = false;                     // of a toggle
    std::string value;                   // of a text box
    std::vector<std::string> entries;    // of a list
    std::vector<std::string> columns;    // captions, of a grid
    std::size_t rowCount = 0;            // of a grid; thousands are possible, hence `Window::Cell`
    std::optional<std::size_t> selected; // entry or row
    double position = 0;                 // of a progress bar
    double maximum = 0;
};

struct CellSeen
{
    std::string text;
    std::optional<ui::Colour> foreground; // empty: the grid's own
    std::optional<ui::Colour> background;
    ui::Image image = ui::Image::None;
};

class Window
{
public:
    virtual ~Window() = default;

    // A number that no other window of this run has had.
    [[nodiscard]] virtual std::uint64_t Id() const = 0;
    [[nodiscard]] virtual WindowKind Kind() const = 0;
    [[nodiscard]] virtual std::string Title() const = 0;
    // Of a box: its icon, and its text with lines joined by CR LF.
    [[nodiscard]] virtual ui::Icon Icon() const { return ui::Icon::None; }
    [[nodiscard]] virtual std::string Text() const { return {}; }
    // All that can be seen, top to bottom and then left to right; hidden controls are not.
    [[nodiscard]] virtual std::vector<ControlSeen> Controls() const { return {}; }
    [[nodiscard]] virtual CellSeen Cell(std::size_t /*grid*/, std::size_t /*row*/, std::size_t /*column*/) const
    {
        return {};
    }

    // Those of one kind; every number below is a place among these, counted from 0.
    [[nodiscard]] std::vector<ControlSeen> All(ControlKind kind) const
    {
        auto controls = Controls();
        std::erase_if(controls, [kind](const ControlSeen& control) { return control.kind != kind; });
        return controls;
    }

    // Actions. Each is started and may take effect after its return. The player presses only what exists; pressing
    // something disabled does nothing, as with a real hand. So does what a window of this kind does not have.
    virtual void Press(std::size_t /*button*/) {}
    virtual void SelectRow(std::size_t /*grid*/, std::size_t /*row*/) {}
    virtual void DoubleClickRow(std::size_t /*grid*/, std::size_t /*row*/) {}
    // Replaces the content of a text box, as typing does: the form hears of it.
    virtual void Type(std::size_t /*textBox*/, const std::string& /*text*/) {}
    virtual void SetToggle(std::size_t /*toggle*/, bool /*on*/) {}
    virtual void ChooseEntry(std::size_t /*list*/, std::size_t /*entry*/) {}
    // One key or combination at the control that has the keyboard: "Tab", "Shift+Tab", "Enter", "Escape", "Space",
    // "Up", "Down", "Home", "End", "Alt+C", or a single character. False where the target has no such key, and then
    // nothing has happened.
    virtual bool Key(const std::string& /*key*/) { return false; }
    virtual void CloseByFrame() = 0;
    // In a file dialog: names the file and opens it; "" cancels.
    virtual void ChooseFile(const std::filesystem::path& /*file*/) {}
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

} // namespace vellumo::player
