// Where controls stand in a window: lines, what is left over, the closing row of buttons.
#include "platform/windows/forms/form_layout.h"

#include <doctest.h>

using vellumo::windows::FormLayout;

namespace
{

constexpr int margin = 10;
constexpr int gap = 5;

bool Is(const RECT& place, int left, int top, int right, int bottom)
{
    CAPTURE(place.left);
    CAPTURE(place.top);
    CAPTURE(place.right);
    CAPTURE(place.bottom);
    return place.left == left && place.top == top && place.right == right && place.bottom == bottom;
}

} // namespace

TEST_SUITE("window layout")
{
    TEST_CASE("grids share the height, what stretches the width, and the buttons stand at the bottom right")
    {
        const FormLayout layout({{.size = {100, 20}, .stretches = true},                 // label
                                 {.size = {50, 60}, .stretches = true, .growth = 1},     // grid
                                 {.size = {50, 20}, .stretches = true},                  // text box
                                 {.size = {40, 30}, .sameLine = true, .isButton = true}, // its button
                                 {.size = {50, 60}, .stretches = true, .growth = 2},     // grid
                                 {.size = {40, 30}, .isButton = true},                   // closing row
                                 {.size = {40, 30}, .sameLine = true, .isButton = true}},
                                margin, gap);
        CHECK(layout.NeededSize().cx == 120);
        CHECK(layout.NeededSize().cy == 20 + 60 + 30 + 60 + 30 + 4 * gap + 2 * margin);

        const auto places = layout.Place({220, 240 + 91});
        CHECK(Is(places[0], 10, 10, 210, 30));
        CHECK(Is(places[1], 10, 35, 210, 125));  // 30 more
        CHECK(Is(places[2], 10, 135, 165, 155)); // in the middle of its line
        CHECK(Is(places[3], 170, 130, 210, 160));
        CHECK(Is(places[4], 10, 165, 210, 286)); // 61 more
        CHECK(Is(places[5], 125, 291, 165, 321));
        CHECK(Is(places[6], 170, 291, 210, 321));
    }

    TEST_CASE("without anything that grows the closing row still stands at the bottom")
    {
        const FormLayout layout({{.size = {100, 20}, .stretches = true}, {.size = {40, 30}, .isButton = true}}, margin,
                                gap);
        const auto places = layout.Place({120, 200});
        CHECK(Is(places[0], 10, 10, 110, 30));
        CHECK(Is(places[1], 70, 160, 110, 190));
    }

    TEST_CASE("what leads its line is as wide as the widest such, so that what follows stands in a column")
    {
        const FormLayout layout({{.size = {30, 20}, .leads = true},
                                 {.size = {50, 20}, .sameLine = true, .stretches = true},
                                 {.size = {60, 20}, .leads = true},
                                 {.size = {40, 20}, .sameLine = true, .stretches = true}},
                                margin, gap);
        CHECK(layout.NeededSize().cx == 60 + gap + 50 + 2 * margin);
        const auto places = layout.Place({235, 65});
        CHECK(places[1].left == 75);
        CHECK(places[3].left == 75);
        CHECK(places[1].right == 225);
        CHECK(places[3].right == 225);
    }

    TEST_CASE("in too little room the grid gives way and nothing turns inside out")
    {
        const FormLayout layout(
            {{.size = {50, 60}, .stretches = true, .growth = 1}, {.size = {40, 30}, .isButton = true}}, margin, gap);
        for (const SIZE inner : {SIZE{70, 95}, SIZE{70, 20}, SIZE{0, 0}})
        {
            const auto places = layout.Place(inner);
            for (const RECT& place : places)
            {
                CHECK(place.right >= place.left);
                CHECK(place.bottom >= place.top);
            }
            CHECK(places[1].bottom - places[1].top == 30);
        }
        CHECK(layout.Place({70, 95})[0].bottom == 50);
    }
}
