#include "player/expectation.h"

#include "player/cell.h"

#include <algorithm>
#include <array>
#include <map>
#include <sstream>

namespace vellumo::player
{
namespace
{

using Difference = std::optional<std::string>;
using Look = std::function<Difference(Window&)>;

struct AnswerName
{
    ui::Answer answer;
    const char* name;
};

constexpr std::array<AnswerName, 5> answers = {{{ui::Answer::Ok, "OK"},
                                                {ui::Answer::Cancel, "Cancel"},
                                                {ui::Answer::Retry, "Retry"},
                                                {ui::Answer::Yes, "Yes"},
                                                {ui::Answer::No, "No"}}};

struct IconName
{
    ui::Icon icon;
    const char* name;
};

constexpr std::array<IconName, 4> icons = {{{ui::Icon::None, "plain"},
                                            {ui::Icon::Critical, "critical"},
                                            {ui::Icon::Exclamation, "exclamation"},
                                            {ui::Icon::Information, "information"}}};

Difference Differs(const std::string& what, const std::string& expected, const std::string& seen)
{
    if (expected == seen)
    {
        return std::nullopt;
    }
    return what + "\n  expected: " + Quoted(expected) + "\n  seen:     " + Quoted(seen);
}

std::string Join(const std::vector<std::string>& parts, const char* between)
{
    std::string text;
    for (const auto& part : parts)
    {
        text += (text.empty() ? "" : between) + part;
    }
    return text;
}

// The place of what is called `caption`, or what to say when there is none.
template <class Seen>
std::optional<std::size_t> Find(const std::vector<Seen>& all, const std::string& caption)
{
    const auto found = std::find_if(all.begin(), all.end(), [&](const Seen& seen) { return seen.caption == caption; });
    return found == all.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - all.begin()));
}

template <class Seen>
std::string Captions(const std::vector<Seen>& all)
{
    std::vector<std::string> captions;
    std::transform(all.begin(), all.end(), std::back_inserter(captions),
                   [](const Seen& seen) { return Quoted(seen.caption); });
    return captions.empty() ? "none" : Join(captions, ", ");
}

template <class Seen>
std::string None(const char* what, const std::string& caption, const std::vector<Seen>& all)
{
    return "no " + std::string(what) + ' ' + Quoted(caption) + "; there is: " + Captions(all);
}

// Buttons of a box go by the answer that they give, those of a form by their caption.
std::optional<std::size_t> FindButton(const std::vector<ButtonSeen>& buttons, const std::string& name)
{
    const auto found =
        std::find_if(buttons.begin(), buttons.end(),
                     [&](const ButtonSeen& button)
                     { return button.standard ? NameOf(*button.standard) == name : button.caption == name; });
    return found == buttons.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - buttons.begin()));
}

std::size_t Position(Line& line, std::string_view meaning)
{
    const auto number = line.Number(meaning);
    if (number < 1)
    {
        line.Fail(std::string(meaning) + " counts from 1");
    }
    return static_cast<std::size_t>(number - 1);
}

std::size_t GridOf(Line& line)
{
    return line.Take("of") && line.Take("grid") ? Position(line, "number of the grid") : 0;
}

Look ReadLabel(Line& line)
{
    return [text = line.Word("the label's text")](Window& window) -> Difference
    {
        const auto labels = window.Labels();
        if (std::find(labels.begin(), labels.end(), text) != labels.end())
        {
            return std::nullopt;
        }
        return "no label " + Quoted(text) + "; there is: " + Quoted(Join(labels, " / "));
    };
}

Look ReadButton(Line& line)
{
    const auto name = line.Word("the button");
    const bool isDefault = line.Take("default");
    const bool disabled = line.Take("disabled");
    return [=](Window& window) -> Difference
    {
        const auto buttons = window.Buttons();
        const auto at = FindButton(buttons, name);
        if (!at)
        {
            return None("button", name, buttons);
        }
        if (isDefault && !buttons[*at].isDefault)
        {
            return "the button " + Quoted(name) + " is not the default one";
        }
        if (buttons[*at].enabled == disabled)
        {
            return "the button " + Quoted(name) + (disabled ? " is enabled" : " is disabled");
        }
        return std::nullopt;
    };
}

Look ReadToggle(Line& line)
{
    const auto caption = line.Word("the caption");
    const bool on = line.Take("on");
    if (!on && !line.Take("off"))
    {
        line.Fail("expected on or off");
    }
    const bool disabled = line.Take("disabled");
    return [=](Window& window) -> Difference
    {
        const auto toggles = window.Toggles();
        const auto at = Find(toggles, caption);
        if (!at)
        {
            return None("check box or option", caption, toggles);
        }
        if (toggles[*at].enabled == disabled)
        {
            return Quoted(caption) + (disabled ? " is enabled" : " is disabled");
        }
        return Differs(Quoted(caption), on ? "on" : "off", toggles[*at].on ? "on" : "off");
    };
}

Look ReadTextBox(Line& line)
{
    const auto caption = line.Word("the text box");
    const auto value = line.Word("its content");
    return [=](Window& window) -> Difference
    {
        const auto boxes = window.TextBoxes();
        const auto at = Find(boxes, caption);
        return at ? Differs("text box " + Quoted(caption), value, boxes[*at].value) : None("text box", caption, boxes);
    };
}

Look ReadList(Line& line)
{
    const auto list = Position(line, "number of the list");
    const auto entry = line.Word("the entry that shows");
    const bool enabled = !line.Take("disabled");
    return [=](Window& window) -> Difference
    {
        const auto lists = window.Lists();
        if (list >= lists.size())
        {
            return "there are only " + std::to_string(lists.size()) + " lists";
        }
        if (lists[list].enabled != enabled)
        {
            return "list " + std::to_string(list + 1) + (enabled ? " is disabled" : " is enabled");
        }
        const auto index = lists[list].index;
        return Differs("list " + std::to_string(list + 1), entry,
                       index < 0 ? "" : lists[list].entries[static_cast<std::size_t>(index)]);
    };
}

Difference RowDiffers(const Window& window, std::size_t grid, std::size_t row, const std::vector<std::string>& cells)
{
    const auto columns = window.Grids()[grid].columns.size();
    if (cells.size() != columns)
    {
        return "the grid has " + std::to_string(columns) + " columns, the line " + std::to_string(cells.size());
    }
    for (std::size_t column = 0; column < columns; ++column)
    {
        if (auto difference = CellDiffers(cells[column], window.Cell(grid, row, column)))
        {
            return "row " + std::to_string(row + 1) + ", column " + std::to_string(column + 1) + *difference;
        }
    }
    return std::nullopt;
}

Look WithGrid(std::size_t grid, std::function<Difference(Window&, const GridSeen&)> look)
{
    return [grid, look = std::move(look)](Window& window) -> Difference
    {
        const auto grids = window.Grids();
        return grid < grids.size() ? look(window, grids[grid])
                                   : "there are only " + std::to_string(grids.size()) + " grids";
    };
}

// "grid 1" with all rows in its block, "grid 1 columns A | B", "grid 1 row 3 a | b", "grid 1 has 40 rows",
// "grid 1 selected 2".
Look ReadGrid(Line& line)
{
    const auto grid = Position(line, "number of the grid");
    if (line.Take("columns"))
    {
        return WithGrid(grid, [cells = line.Cells()](Window&, const GridSeen& seen)
                        { return Differs("columns", Join(cells, " | "), Join(seen.columns, " | ")); });
    }
    if (line.Take("row"))
    {
        const auto row = Position(line, "number of the row");
        return WithGrid(grid,
                        [=, cells = line.Cells()](Window& window, const GridSeen& seen) -> Difference
                        {
                            return row < seen.rowCount ? RowDiffers(window, grid, row, cells)
                                                       : "there are only " + std::to_string(seen.rowCount) + " rows";
                        });
    }
    if (line.Take("has"))
    {
        const auto count = line.Number("number of rows");
        line.Take("rows");
        return WithGrid(grid, [=](Window&, const GridSeen& seen)
                        { return Differs("rows", std::to_string(count), std::to_string(seen.rowCount)); });
    }
    if (line.Take("selected"))
    {
        const auto row = Position(line, "number of the row");
        return WithGrid(grid,
                        [=](Window&, const GridSeen& seen)
                        {
                            return Differs("selected row", std::to_string(row + 1),
                                           seen.selected ? std::to_string(*seen.selected + 1) : "none");
                        });
    }
    std::vector<std::vector<std::string>> rows;
    for (const auto& text : line.Block())
    {
        rows.push_back(Line(line.Where(), text).Cells());
    }
    return WithGrid(grid,
                    [=](Window& window, const GridSeen& seen) -> Difference
                    {
                        for (std::size_t row = 0; row < std::min(rows.size(), seen.rowCount); ++row)
                        {
                            if (auto difference = RowDiffers(window, grid, row, rows[row]))
                            {
                                return difference;
                            }
                        }
                        return Differs("rows", std::to_string(rows.size()), std::to_string(seen.rowCount));
                    });
}

Look ReadProgress(Line& line)
{
    const auto value = line.Number("the position");
    line.Take("of");
    const auto maximum = line.Number("the maximum");
    return [=](Window& window) -> Difference
    {
        const auto bars = window.ProgressBars();
        if (bars.empty())
        {
            return "there is no progress bar";
        }
        const auto text = [](double at, double of)
        { return std::to_string(static_cast<int>(at)) + " of " + std::to_string(static_cast<int>(of)); };
        return Differs("progress", text(value, maximum), text(bars.front().value, bars.front().maximum));
    };
}

Look ReadPress(Line& line)
{
    const auto name = line.Word("the button");
    return [=](Window& window) -> Difference
    {
        const auto buttons = window.Buttons();
        const auto at = FindButton(buttons, name);
        if (!at)
        {
            return None("button", name, buttons);
        }
        window.Press(*at);
        return std::nullopt;
    };
}

Look RowAction(std::size_t row, std::size_t grid, void (Window::*act)(std::size_t, std::size_t))
{
    return WithGrid(grid,
                    [=](Window& window, const GridSeen& seen) -> Difference
                    {
                        if (row >= seen.rowCount)
                        {
                            return "there are only " + std::to_string(seen.rowCount) + " rows";
                        }
                        (window.*act)(grid, row);
                        return std::nullopt;
                    });
}

Look ReadSelect(Line& line)
{
    line.Take("row");
    const auto row = Position(line, "number of the row");
    return RowAction(row, GridOf(line), &Window::SelectRow);
}

Look ReadDoubleClick(Line& line)
{
    line.Take("row");
    const auto row = Position(line, "number of the row");
    return RowAction(row, GridOf(line), &Window::DoubleClickRow);
}

Look ReadType(Line& line)
{
    const auto text = line.Word("what is typed");
    line.Take("into");
    const auto caption = line.Word("the text box");
    return [=](Window& window) -> Difference
    {
        const auto boxes = window.TextBoxes();
        const auto at = Find(boxes, caption);
        if (!at)
        {
            return None("text box", caption, boxes);
        }
        window.Type(*at, text);
        return std::nullopt;
    };
}

Look ToggleAction(const std::string& caption, bool on)
{
    return [=](Window& window) -> Difference
    {
        const auto toggles = window.Toggles();
        const auto at = Find(toggles, caption);
        if (!at)
        {
            return None("check box or option", caption, toggles);
        }
        window.SetToggle(*at, on);
        return std::nullopt;
    };
}

// `choose "Ricetta elettronica"` takes an option, `choose entry "…" of list 2` an entry of a list.
Look ReadChoose(Line& line)
{
    if (!line.Take("entry"))
    {
        return ToggleAction(line.Word("the option"), true);
    }
    const auto entry = line.Word("the entry");
    const auto list = line.Take("of") && line.Take("list") ? Position(line, "number of the list") : 0;
    return [=](Window& window) -> Difference
    {
        const auto lists = window.Lists();
        if (list >= lists.size())
        {
            return "there are only " + std::to_string(lists.size()) + " lists";
        }
        const auto& entries = lists[list].entries;
        const auto at = std::find(entries.begin(), entries.end(), entry);
        if (at == entries.end())
        {
            return "no entry " + Quoted(entry) + "; there is: " + Quoted(Join(entries, " / "));
        }
        window.ChooseEntry(list, static_cast<int>(at - entries.begin()));
        return std::nullopt;
    };
}

Look ReadKey(Line& line)
{
    const auto key = line.Word("the key");
    return [=](Window& window) -> Difference
    {
        if (window.Key(key))
        {
            return std::nullopt;
        }
        return "this target has no keyboard for the key " + key;
    };
}

struct WindowWord
{
    const char* told; // of an action: how it is told, before what is written behind the keyword
    Look (*read)(Line&);
};

const std::map<std::string, WindowWord>& WindowWords()
{
    static const std::map<std::string, WindowWord> words = {
        {"label", {"", ReadLabel}},
        {"button", {"", ReadButton}},
        {"checkbox", {"", ReadToggle}},
        {"option", {"", ReadToggle}},
        {"textbox", {"", ReadTextBox}},
        {"list", {"", ReadList}},
        {"grid", {"", ReadGrid}},
        {"progress", {"", ReadProgress}},
        {"press", {"preme ", ReadPress}},
        {"select", {"sceglie la riga ", ReadSelect}},
        {"double-click", {"doppio clic sulla riga ", ReadDoubleClick}},
        {"type", {"scrive ", ReadType}},
        {"tick", {"spunta ", [](Line& line) { return ToggleAction(line.Word("the check box"), true); }}},
        {"untick", {"toglie la spunta a ", [](Line& line) { return ToggleAction(line.Word("the check box"), false); }}},
        {"choose", {"sceglie ", ReadChoose}},
        {"key", {"tasto ", ReadKey}},
        {"close",
         {"chiude la finestra",
          [](Line&) -> Look
          {
              return [](Window& window) -> Difference
              {
                  window.CloseByFrame();
                  return std::nullopt;
              };
          }}},
    };
    return words;
}

} // namespace

std::string NameOf(ui::Answer answer)
{
    return std::find_if(answers.begin(), answers.end(), [=](const AnswerName& each) { return each.answer == answer; })
        ->name;
}

std::string NameOf(ui::Icon icon)
{
    return std::find_if(icons.begin(), icons.end(), [=](const IconName& each) { return each.icon == icon; })->name;
}

std::string Describe(const Window& window)
{
    const auto buttons = window.Buttons();
    if (window.Kind() == WindowKind::Form)
    {
        return "the window " + Quoted(window.Title()) + " with the buttons " + Captions(buttons);
    }
    std::vector<std::string> names;
    names.reserve(buttons.size());
    for (const auto& button : buttons)
    {
        names.push_back(button.standard ? NameOf(*button.standard) : button.caption);
    }
    return "the box " + Quoted(window.Title()) + ' ' + NameOf(window.Icon()) + ' ' + Join(names, "/") +
           " with the text " + Quoted(window.Text());
}

std::optional<WindowItem> ReadWindowLine(const std::string& keyword, Line& line)
{
    const auto found = WindowWords().find(keyword);
    if (found == WindowWords().end())
    {
        return std::nullopt;
    }
    const auto behind = line.Peek();
    WindowItem item{line.Where(), found->second.told, found->second.read(line)};
    if (item.IsAction())
    {
        item.told += behind;
    }
    line.End();
    return item;
}

std::vector<WindowItem> ReadBoxHeader(Line& line)
{
    std::vector<WindowItem> items;
    const auto look = [&](Look check) { items.push_back({line.Where(), "", std::move(check)}); };
    const auto icon = line.Word("the icon (critical, exclamation, information or plain)");
    if (std::none_of(icons.begin(), icons.end(), [&](const IconName& each) { return each.name == icon; }))
    {
        line.Fail("unknown icon " + icon + "; there is critical, exclamation, information and plain");
    }
    look([=](Window& window) { return Differs("icon", icon, NameOf(window.Icon())); });
    const auto buttons = line.Word("the buttons, such as Yes/No");
    const auto isDefault =
        line.Take("default") ? line.Word("the default button") : buttons.substr(0, buttons.find('/'));
    look(
        [=](Window& window)
        {
            std::vector<std::string> names;
            std::string marked = "none";
            for (const auto& button : window.Buttons())
            {
                names.push_back(button.standard ? NameOf(*button.standard) : button.caption);
                marked = button.isDefault ? names.back() : marked;
            }
            return Differs("buttons and default", buttons + ", " + isDefault, Join(names, "/") + ", " + marked);
        });
    look([text = line.BlockText("\r\n")](Window& window) { return Differs("text", text, window.Text()); });
    line.End();
    return items;
}

} // namespace vellumo::player
