// What a scenario says about the windows of one call: which must appear, what must be seen in each, what the operator
// does there.
#pragma once

#include "player/line.h"
#include "player/screen.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vellumo::player
{

// One line inside a window: a look at it or one thing done to it.
struct WindowItem
{
    Place place;
    std::string told; // of an action: what the operator does, in Italian; "" for a look
    // Empty when all is well, else what differs.
    std::function<std::optional<std::string>(Window&)> perform;

    [[nodiscard]] bool IsAction() const noexcept { return !told.empty(); }
};

struct ExpectedWindow
{
    Place place;
    WindowKind kind = WindowKind::Box;
    std::string title;
    std::vector<WindowItem> items;
};

// "Yes", "No" …: how scenarios name the answers of a box.
[[nodiscard]] std::string NameOf(ui::Answer answer);
[[nodiscard]] std::string NameOf(ui::Icon icon);
// The whole window in one line, for messages.
[[nodiscard]] std::string Describe(const Window& window);

// Reads a line inside a window ("label …", "press …"); empty when it is no such line.
[[nodiscard]] std::optional<WindowItem> ReadWindowLine(const std::string& keyword, Line& line);
// The checks of "box "title" exclamation Yes/No default No" with its text block.
[[nodiscard]] std::vector<WindowItem> ReadBoxHeader(Line& line);

} // namespace vellumo::player
