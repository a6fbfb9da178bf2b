// The parts that a form is made of, without a toolkit: what each shows and what state it is in. A view draws them in
// the order in which the form lists them, top to bottom, which is also the tab order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace vellumo::ui
{

struct Label;
struct TextBox;
struct CheckBox;
struct OptionButton;
struct ComboBox;
struct Grid;
struct ProgressBar;
struct Button;

// A control as what it is. Whoever treats all kinds visits it, so that a new kind is forgotten nowhere.
using AnyControl = std::variant<Label*, TextBox*, CheckBox*, OptionButton*, ComboBox*, Grid*, ProgressBar*, Button*>;

// 0xRRGGBB.
using Colour = std::uint32_t;

// A small picture before a text; the platform's own for an error and a warning.
enum class Image
{
    None,
    Error,
    Warning
};

struct Control
{
    explicit Control(std::string controlText)
        : text(std::move(controlText))
    {
    }
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    [[nodiscard]] virtual AnyControl Actual() noexcept = 0;

    // Caption or shown text; for a text box the caption beside it, for a grid the heading above it. "&" marks the
    // access key, except in a label, which shows its text as it stands.
    std::string text;
    bool enabled = true;
    bool visible = true;
    // Stands on the line of the control before it, not below it.
    bool sameLine = false;
    // The label on its line that says what it does. The buttons and boxes of a form that have one begin a line each and
    // are equally wide, so that the labels stand below one another.
    const Label* explanation = nullptr;
};

struct Label final : Control
{
    explicit Label(std::string labelText)
        : Control(std::move(labelText))
    {
    }
    [[nodiscard]] AnyControl Actual() noexcept override { return this; }

    bool strong = false;
    // Lines that the text may need; the view keeps room for them.
    int lines = 1;
    Image image = Image::None; // of a label of one line
};

struct TextBox final : Control
{
    explicit TextBox(std::string caption)
        : Control(std::move(caption))
    {
    }
    [[nodiscard]] AnyControl Actual() noexcept override { return this; }

    std::string value;
    // To be read and copied, not to be changed.
    bool readOnly = false;
    // With more than one the caption stands above the box, lines are broken, and what does not fit scrolls.
    int lines = 1;
    // The grid that this box searches: the arrow and page keys move in it while the keyboard stays in the box.
    Grid* list = nullptr;
};

struct CheckBox final : Control
{
    explicit CheckBox(std::string caption)
        : Control(std::move(caption))
    {
    }
    [[nodiscard]] AnyControl Actual() noexcept override { return this; }

    bool checked = false;
};

// The option buttons of a form are one group.
struct OptionButton final : Control
{
    explicit OptionButton(std::string caption)
        : Control(std::move(caption))
    {
    }
    [[nodiscard]] AnyControl Actual() noexcept override { return this; }

    bool selected = false;
};

struct ComboBox final : Control
{
    ComboBox()
        : Control({})
    {
    }
    [[nodiscard]] AnyControl Actual() noexcept override { return this; }

    std::vector<std::string> entries;
    int index = -1; // -1: nothing chosen
};

struct ProgressBar final : Control
{
    ProgressBar()
        : Control({})
    {
    }
    [[nodiscard]] AnyControl Actual() noexcept override { return this; }

    float value = 0;
    float maximum = 100;
};

struct Button final : Control
{
    explicit Button(std::string caption)
        : Control(std::move(caption))
    {
    }
    [[nodiscard]] AnyControl Actual() noexcept override { return this; }

    bool isDefault = false; // pressed by Enter; a form may hand it on to another button
    bool isCancel = false;  // pressed by Escape
};

struct Cell
{
    std::string text = {};
    std::optional<Colour> foreground = {};
    std::optional<Colour> background = {};
    Image image = Image::None; // before the text
    bool strong = false;
};

struct Column
{
    std::string key;
    std::string caption;
    // Design width in twips (1440 an inch). The first column keeps it, the others share the width of the window in
    // proportion.
    int width = 1700;
};

using Row = std::vector<Cell>; // one cell a column

// May hold thousands of rows, so a view draws only what is visible. `selected` is the row that the operator is on.
struct Grid final : Control
{
    explicit Grid(std::string heading)
        : Control(std::move(heading))
    {
    }
    [[nodiscard]] AnyControl Actual() noexcept override { return this; }

    std::vector<Column> columns;
    std::vector<Row> rows;
    std::optional<std::size_t> selected;
    int visibleRows = 8; // design height, in rows of one line
    // Texts are broken into as many lines as they need, and each row is as high as its longest cell. For some hundreds
    // of rows: the view measures them all.
    bool wraps = false;
};

// The control as one of that kind; null when it is of another.
template <class Kind>
[[nodiscard]] Kind* As(Control& control) noexcept
{
    const AnyControl actual = control.Actual();
    const auto* const found = std::get_if<Kind*>(&actual);
    return found != nullptr ? *found : nullptr;
}

} // namespace vellumo::ui
