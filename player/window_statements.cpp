// What can be seen in a window, and what the operator does there.
#include "player/cell.h"
#include "player/controls.h"
#include "player/run.h"
#include "player/written.h"

#include <algorithm>

namespace vellumo::player
{
namespace
{

void ExpectEnabled(const std::string& what, const ControlSeen& control, bool enabled)
{
    Expect(what, enabled ? "enabled" : "disabled", control.enabled ? "enabled" : "disabled");
}

void LookAtToggle(Run& run, const Node& node)
{
    const auto caption = node.Text("CAPTION");
    const auto toggle = Find(run.TheWindow(), ControlKind::Toggle, caption).control;
    Expect(Quoted(caption), node.Has("on") ? "on" : "off", toggle.on ? "on" : "off");
    ExpectEnabled(Quoted(caption), toggle, !node.Has("disabled"));
}

void LookAtButton(Run& run, const Node& node)
{
    const auto what = "the button " + Quoted(node.Text("CAPTION"));
    const auto button = Find(run.TheWindow(), ControlKind::Button, node.Text("CAPTION")).control;
    if (node.Has("default") && !button.isDefault)
    {
        throw Differs(what + " is not the default one");
    }
    ExpectEnabled(what, button, !node.Has("disabled"));
}

void LookAtList(Run& run, const Node& node)
{
    const auto what = "list " + node.Text("N");
    const auto list = Find(run.TheWindow(), ControlKind::List, node.Number("N")).control;
    ExpectEnabled(what, list, !node.Has("disabled"));
    Expect(what, node.Text("ENTRY"), list.selected ? list.entries.at(*list.selected) : "");
}

Found TheGrid(Run& run, const Node& node, const std::string& number)
{
    return Find(run.TheWindow(), ControlKind::Grid, node.Has(number) ? node.Number(number) : 1);
}

// Counted from 0.
std::size_t RowOf(const Found& grid, const Node& node, const std::string& number)
{
    const auto row = node.Count(number);
    if (row < 1 || row > grid.control.rowCount)
    {
        throw Differs("no row " + node.Text(number) + "; they are counted from 1 to " +
                      std::to_string(grid.control.rowCount));
    }
    return row - 1;
}

void LookAtRow(Run& run, const Found& grid, std::size_t row, const std::vector<std::string>& cells)
{
    const auto columns = grid.control.columns.size();
    if (cells.size() != columns)
    {
        throw Differs("the grid has " + std::to_string(columns) + " columns, the line " + std::to_string(cells.size()));
    }
    for (std::size_t column = 0; column < columns; ++column)
    {
        ExpectCell("row " + std::to_string(row + 1) + ", column " + std::to_string(column + 1), cells[column],
                   run.TheWindow().Cell(grid.place, row, column));
    }
}

void LookAtRows(Run& run, const Node& node)
{
    const auto grid = TheGrid(run, node, "N");
    for (std::size_t row = 0; row < std::min(node.block.size(), grid.control.rowCount); ++row)
    {
        LookAtRow(run, grid, row, Line(node.place, node.block[row]).Cells());
    }
    Expect("rows", std::to_string(node.block.size()), std::to_string(grid.control.rowCount));
}

void LookAtProgress(Run& run, const Node& node)
{
    const auto bar = Find(run.TheWindow(), ControlKind::ProgressBar, 1).control;
    const auto text = [](auto position, auto maximum)
    { return std::to_string(static_cast<int>(position)) + " of " + std::to_string(static_cast<int>(maximum)); };
    Expect("progress", text(node.Number("N"), node.Number("M")), text(bar.position, bar.maximum));
}

void UseRow(Run& run, const Node& node, void (Window::*use)(std::size_t, std::size_t))
{
    const auto grid = TheGrid(run, node, "M");
    (run.TheWindow().*use)(grid.place, RowOf(grid, node, "N"));
}

void SetToggle(Run& run, const Node& node)
{
    const auto toggle = Find(run.TheWindow(), ControlKind::Toggle, node.Text("CAPTION"));
    run.TheWindow().SetToggle(toggle.place, node.Keyword() != "untick");
}

void ChooseEntry(Run& run, const Node& node)
{
    const auto [place, list] = Find(run.TheWindow(), ControlKind::List, node.Has("N") ? node.Number("N") : 1);
    const auto at = std::find(list.entries.begin(), list.entries.end(), node.Text("ENTRY"));
    if (at == list.entries.end())
    {
        throw Differs("no entry " + Quoted(node.Text("ENTRY")) + "; there is: " + Quoted(Joined(list.entries, " / ")));
    }
    run.TheWindow().ChooseEntry(place, static_cast<std::size_t>(at - list.entries.begin()));
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
        {"window", "label 'TEXT'", "a label",
         [](Run& run, const Node& node)
         { static_cast<void>(Find(run.TheWindow(), ControlKind::Label, node.Text("TEXT"))); }},
        {"window", "button 'CAPTION' [default] [disabled]", "a button and its state", LookAtButton},
        {"window", "checkbox 'CAPTION' on/off [disabled]", "a check box", LookAtToggle},
        {"window", "option 'CAPTION' on/off [disabled]", "an option button", LookAtToggle},
        {"window", "textbox 'CAPTION' 'TEXT'", "the content of a text box",
         [](Run& run, const Node& node)
         {
             Expect("text box " + Quoted(node.Text("CAPTION")), node.Text("TEXT"),
                    Find(run.TheWindow(), ControlKind::TextBox, node.Text("CAPTION")).control.value);
         }},
        {"window", "list N 'ENTRY' [disabled]", "the entry that a list shows", LookAtList},
        {"window", "grid N columns CELLS…",
         "the captions of a grid's columns, with `\\|` between them. Grids, lists, rows and columns count from 1",
         [](Run& run, const Node& node)
         { Expect("columns", Joined(node.Cells(), " | "), Joined(TheGrid(run, node, "N").control.columns, " | ")); }},
        {"window", "grid N row M CELLS…",
         "a row, with `\\|` between its cells: `*` for any text, `\\n` in a text is a line break; `[blue on "
         "#FFEFF6]` "
         "behind a text for its colours, `[plain]` for none; `[error]` or `[warning]` for the picture before it",
         [](Run& run, const Node& node)
         {
             const auto grid = TheGrid(run, node, "N");
             LookAtRow(run, grid, RowOf(grid, node, "M"), node.Cells());
         }},
        {"window", "grid N has M ~rows", "how many rows there are",
         [](Run& run, const Node& node)
         { Expect("rows", node.Text("M"), std::to_string(TheGrid(run, node, "N").control.rowCount)); }},
        {"window", "grid N selected M", "the row that is selected",
         [](Run& run, const Node& node)
         {
             const auto row = TheGrid(run, node, "N").control.selected;
             Expect("selected row", node.Text("M"), row ? std::to_string(*row + 1) : "none");
         }},
        {"window", "grid N", "all rows, in its block", LookAtRows},
        {"window", "progress N ~of M", "how far the bar is", LookAtProgress},
    }};

const Group actionStatements = {
    "done",
    Role::Step,
    {
        {"window", "press 'BUTTON'", "presses a button; that of a box goes by its answer: `press No`",
         [](Run& run, const Node& node)
         { run.TheWindow().Press(Find(run.TheWindow(), ControlKind::Button, node.Text("BUTTON")).place); },
         "preme *"},
        {"window", "select ~row N [of grid M]", "selects a row",
         [](Run& run, const Node& node) { UseRow(run, node, &Window::SelectRow); }, "sceglie la riga *"},
        {"window", "double-click ~row N [of grid M]", "double-clicks a row",
         [](Run& run, const Node& node) { UseRow(run, node, &Window::DoubleClickRow); }, "doppio clic sulla riga *"},
        {"window", "type 'TEXT' ~into 'CAPTION'", "types into a text box, in place of what was there",
         [](Run& run, const Node& node)
         {
             auto& window = run.TheWindow();
             window.Type(Find(window, ControlKind::TextBox, node.Text("CAPTION")).place, node.Text("TEXT"));
         },
         "scrive *"},
        {"window", "tick 'CAPTION'", "sets a check box", SetToggle, "spunta *"},
        {"window", "untick 'CAPTION'", "clears it", SetToggle, "toglie la spunta a *"},
        {"window", "choose entry 'ENTRY' [of list N]", "chooses an entry of a list", ChooseEntry, "sceglie *"},
        {"window", "choose 'CAPTION'", "chooses an option", SetToggle, "sceglie *"},
        {"window", "key KEY", "presses a key: `Enter`, `Escape`, `Tab`, `Down`, `Alt+C` …", PressKey, "tasto *"},
        {"window", "close", "closes the window by its frame",
         [](Run& run, const Node&) { run.TheWindow().CloseByFrame(); }, "chiude la finestra"},
        {"window", "open nothing", "in a dialog: cancels",
         [](Run& run, const Node&) { run.TheWindow().ChooseFile({}); }, "non sceglie nessun file"},
        {"window", "open beside 'FILE'", "in a dialog: takes a file from beside the scenario",
         [](Run& run, const Node& node)
         { run.TheWindow().ChooseFile(std::filesystem::absolute(FileBeside(node, node.Text("FILE")))); },
         "apre *"},
        {"window", "open 'PATH'", "in a dialog: takes a file below the practice's folder",
         [](Run& run, const Node& node) {
             run.TheWindow().ChooseFile(run.GetStage().Practice().Folder() /
                                        std::filesystem::u8path(node.Text("PATH")));
         },
         "apre *"},
    }};

} // namespace vellumo::player
