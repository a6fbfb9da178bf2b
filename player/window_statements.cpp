// What can be seen in a window, and what the operator does there.
#include "player/cell.h"
#include "player/run.h"
#include "player/written.h"
#include "simulator/screen/controls.h"

#include <algorithm>

namespace vellumo::player
{
namespace
{

void ExpectEnabled(const std::string& what, const ui::Control& control, bool enabled)
{
    Expect(what, enabled ? "enabled" : "disabled", control.enabled ? "enabled" : "disabled");
}

template <class Kind>
Kind& Named(Run& run, const Node& node)
{
    return screen::Find<Kind>(run.TheWindow(), node.Text("CAPTION"));
}

template <class Kind, bool Kind::*isOn>
void LookAtToggle(Run& run, const Node& node)
{
    const auto& toggle = Named<Kind>(run, node);
    Expect(Quoted(node.Text("CAPTION")), node.choice, toggle.*isOn ? "on" : "off");
    ExpectEnabled(Quoted(node.Text("CAPTION")), toggle, !node.Has("disabled"));
}

void LookAtButton(Run& run, const Node& node)
{
    const auto what = "the button " + Quoted(node.Text("CAPTION"));
    const auto& button = Named<ui::Button>(run, node);
    if (node.Has("default") && !button.isDefault)
    {
        throw Differs(what + " is not the default one");
    }
    ExpectEnabled(what, button, !node.Has("disabled"));
}

void LookAtList(Run& run, const Node& node)
{
    const auto what = "list " + node.Text("N");
    const auto& list = screen::Find<ui::ComboBox>(run.TheWindow(), node.Count("N"));
    ExpectEnabled(what, list, !node.Has("disabled"));
    Expect(what, node.Text("ENTRY"), list.index < 0 ? "" : list.entries.at(static_cast<std::size_t>(list.index)));
}

void LookForPart(Run& run, const Node& node)
{
    const auto labels = screen::CaptionsOf(run.TheWindow().All<ui::Label>());
    const auto part = node.Text("PART");
    if (std::none_of(labels.begin(), labels.end(), [&](const auto& text) { return text.find(part) != text.npos; }))
    {
        throw Differs("no label with " + Quoted(part) + "; there is: " + Quoted(Joined(labels, "\" / \"")));
    }
}

void LookForKeyboard(Run& run, const Node& node)
{
    auto* const control = run.TheWindow().Keyboard();
    Expect("the keyboard is at", node.Text("CAPTION"), control == nullptr ? "nothing" : screen::CaptionOf(*control));
}

// The first, when the line does not say which.
template <class Kind>
Kind& TheOne(Run& run, const Node& node, const std::string& number)
{
    return screen::Find<Kind>(run.TheWindow(), node.Has(number) ? node.Count(number) : 1);
}

// Counted from 0.
std::size_t RowOf(const ui::Grid& grid, const Node& node, const std::string& number)
{
    static_cast<void>(Numbered(grid.rows, node.Count(number), "row"));
    return node.Count(number) - 1;
}

void LookAtRow(Run& run, const ui::Grid& grid, std::size_t row, const std::vector<std::string>& cells)
{
    const auto columns = grid.columns.size();
    if (cells.size() != columns)
    {
        throw Differs("the grid has " + std::to_string(columns) + " columns, the line " + std::to_string(cells.size()));
    }
    for (std::size_t column = 0; column < columns; ++column)
    {
        ExpectCell("row " + std::to_string(row + 1) + ", column " + std::to_string(column + 1), cells[column],
                   run.TheWindow().Cell(grid, row, column));
    }
}

void LookAtRows(Run& run, const Node& node)
{
    const auto& grid = TheOne<ui::Grid>(run, node, "N");
    for (std::size_t row = 0; row < std::min(node.block.size(), grid.rows.size()); ++row)
    {
        LookAtRow(run, grid, row, CellsOf(node.place, node.block[row]));
    }
    Expect("rows", std::to_string(node.block.size()), std::to_string(grid.rows.size()));
}

void LookAtColumns(Run& run, const Node& node)
{
    std::vector<std::string> captions;
    for (const auto& column : TheOne<ui::Grid>(run, node, "N").columns)
    {
        captions.push_back(column.caption);
    }
    Expect("columns", Joined(node.Cells(), " | "), Joined(captions, " | "));
}

void LookAtProgress(Run& run, const Node& node)
{
    const auto& bar = screen::Find<ui::ProgressBar>(run.TheWindow(), 1);
    Expect("progress", node.Text("N") + " of " + node.Text("M"),
           std::to_string(static_cast<int>(bar.value)) + " of " + std::to_string(static_cast<int>(bar.maximum)));
}

// Does it, unless the control is disabled: then nothing happens, as with a real hand.
template <class Act, class Control, class... How>
void Do(Run& run, Act act, Control& control, const How&... how)
{
    if (control.enabled)
    {
        (run.TheWindow().*act)(control, how...);
    }
}

template <class Act>
void UseRow(Run& run, const Node& node, Act act)
{
    auto& grid = TheOne<ui::Grid>(run, node, "M");
    Do(run, act, grid, RowOf(grid, node, "N"));
}

void SetCheckBox(Run& run, const Node& node)
{
    auto& box = Named<ui::CheckBox>(run, node);
    if (box.checked != (node.Keyword() == "tick"))
    {
        Do(run, &screen::Window::Press, box);
    }
}

void ChooseEntry(Run& run, const Node& node)
{
    auto& list = TheOne<ui::ComboBox>(run, node, "N");
    const auto at = std::find(list.entries.begin(), list.entries.end(), node.Text("ENTRY"));
    if (at == list.entries.end())
    {
        throw Differs("no entry " + Quoted(node.Text("ENTRY")) + "; there is: " + Quoted(Joined(list.entries, " / ")));
    }
    Do(run, &screen::Window::Select, list, static_cast<std::size_t>(at - list.entries.begin()));
}

void PressKey(Run& run, const Node& node)
{
    if (!run.TheWindow().Key(node.Text("KEY")))
    {
        throw Differs("this target has no keyboard for the key " + node.Text("KEY"));
    }
}

} // namespace

const Group lookStatements = {
    "seen",
    Role::Step,
    {
        {"window", "label contains 'PART'", "a label that contains that", LookForPart},
        {"window", "label 'TEXT'", "a label",
         [](Run& run, const Node& node)
         { static_cast<void>(screen::Find<ui::Label>(run.TheWindow(), node.Text("TEXT"))); }},
        {"window", "button 'CAPTION' [default] [disabled]", "a button and its state", LookAtButton},
        {"window", "checkbox 'CAPTION' on/off [disabled]", "a check box",
         LookAtToggle<ui::CheckBox, &ui::CheckBox::checked>},
        {"window", "option 'CAPTION' on/off [disabled]", "an option button",
         LookAtToggle<ui::OptionButton, &ui::OptionButton::selected>},
        {"window", "textbox 'CAPTION' ['TEXT']", "the content of a text box; of one of several lines in its block",
         [](Run& run, const Node& node)
         {
             Expect("text box " + Quoted(node.Text("CAPTION")),
                    node.Has("TEXT") ? node.Text("TEXT") : Joined(node.block, "\r\n"),
                    Named<ui::TextBox>(run, node).value);
         }},
        {"window", "list N 'ENTRY' [disabled]", "the entry that a list shows", LookAtList},
        {"window", "keyboard at 'CAPTION'", "the control, grids included, that has the keyboard", LookForKeyboard},
        {"window", "grid N columns CELLS…",
         "the captions of a grid's columns, with `\\|` between them. Grids, lists, rows and columns count from 1",
         LookAtColumns},
        {"window", "grid N row M CELLS…",
         "a row, with `\\|` between its cells: `*` for any text, `\\n` in a text is a line break; `[blue on "
         "#FFEFF6]` behind a text for its colours, `[plain]` for none; `[error]` or `[warning]` for the picture before "
         "it",
         [](Run& run, const Node& node)
         {
             const auto& grid = TheOne<ui::Grid>(run, node, "N");
             LookAtRow(run, grid, RowOf(grid, node, "M"), node.Cells());
         }},
        {"window", "grid N has M rows", "how many rows there are",
         [](Run& run, const Node& node)
         { Expect("rows", node.Text("M"), std::to_string(TheOne<ui::Grid>(run, node, "N").rows.size())); }},
        {"window", "grid N selected M", "the row that is selected",
         [](Run& run, const Node& node)
         {
             const auto row = TheOne<ui::Grid>(run, node, "N").selected;
             Expect("selected row", node.Text("M"), row ? std::to_string(*row + 1) : "none");
         }},
        {"window", "grid N", "all rows, in its block", LookAtRows},
        {"window", "progress N of M", "how far the bar is", LookAtProgress},
    }};

const Group actionStatements = {
    "done",
    Role::Step,
    {
        {"window", "press 'BUTTON'", "presses a button; that of a box goes by its answer: `press No`",
         [](Run& run, const Node& node)
         { Do(run, &screen::Window::Press, screen::Find<ui::Button>(run.TheWindow(), node.Text("BUTTON"))); },
         "preme \"*BUTTON\""},
        {"window", "select row N [of grid M]", "selects a row",
         [](Run& run, const Node& node) { UseRow(run, node, &screen::Window::Select); }, "sceglie la riga *N"},
        {"window", "double-click row N [of grid M]", "double-clicks a row",
         [](Run& run, const Node& node) { UseRow(run, node, &screen::Window::DoubleClick); },
         "doppio clic sulla riga *N"},
        {"window", "type 'TEXT' into 'CAPTION'", "types into a text box, in place of what was there",
         [](Run& run, const Node& node)
         { Do(run, &screen::Window::Type, Named<ui::TextBox>(run, node), node.Text("TEXT")); },
         "scrive \"*TEXT\" in \"*CAPTION\""},
        {"window", "tick 'CAPTION'", "sets a check box", SetCheckBox, "spunta \"*CAPTION\""},
        {"window", "untick 'CAPTION'", "clears it", SetCheckBox, "toglie la spunta a \"*CAPTION\""},
        {"window", "choose entry 'ENTRY' [of list N]", "chooses an entry of a list", ChooseEntry, "sceglie \"*ENTRY\""},
        {"window", "choose 'CAPTION'", "chooses an option",
         [](Run& run, const Node& node) { Do(run, &screen::Window::Press, Named<ui::OptionButton>(run, node)); },
         "sceglie \"*CAPTION\""},
        {"window", "key KEY", "presses a key: `Enter`, `Escape`, `Tab`, `Down`, `Alt+C` …", PressKey,
         "preme il tasto *KEY"},
        {"window", "close", "closes the window by its frame",
         [](Run& run, const Node&) { run.TheWindow().CloseByFrame(); }, "chiude la finestra"},
        {"window", "meanwhile <operation> returns VALUE",
         "a timer of the host's hands everything over anew and calls the library, which returns or faults at once",
         [](Run& run, const Node& node) { run.CallMeanwhile(node); }},
        {"window", "meanwhile <operation> faults ['PART']", "",
         [](Run& run, const Node& node) { run.CallMeanwhile(node); }},
        {"window", "open nothing", "in a dialog: cancels",
         [](Run& run, const Node&) { run.TheWindow().ChooseFile({}); }, "non sceglie nessun file"},
        {"window", "open beside 'FILE'", "in a dialog: takes a file from beside the scenario",
         [](Run& run, const Node& node)
         { run.TheWindow().ChooseFile(std::filesystem::absolute(FileBeside(node, node.Text("FILE")))); },
         "apre \"*FILE\""},
        {"window", "open 'PATH'", "in a dialog: takes a file below the practice's folder",
         [](Run& run, const Node& node) {
             run.TheWindow().ChooseFile(run.GetStage().Practice().Folder() /
                                        std::filesystem::u8path(node.Text("PATH")));
         },
         "apre \"*PATH\""},
    }};

} // namespace vellumo::player
