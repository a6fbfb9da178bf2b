#include "ui/prompt.h"

#include "host/text.h"

#include <algorithm>
#include <string_view>

namespace vellumo::ui
{
namespace
{

struct Room
{
    std::size_t characters;
    std::size_t lineBreaks;
};

constexpr Room box = {.characters = 2000, .lineBreaks = 24};

std::size_t LineBreaks(std::string_view text)
{
    return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

std::string Beginning(std::string_view text, const Room& room)
{
    std::string_view lines = text;
    std::size_t end = 0;
    for (std::size_t breaks = 0; (end = text.find('\n', end)) != std::string_view::npos; ++end, ++breaks)
    {
        if (breaks == room.lineBreaks)
        {
            lines = text.substr(0, end);
            break;
        }
    }
    std::string beginning = host::FirstCharacters(lines, room.characters);
    if (beginning.size() < text.size())
    {
        beginning = host::FirstCharacters(beginning, room.characters - 1);
        beginning.erase(beginning.find_last_not_of("\r\n") + 1);
        beginning += "…";
    }
    return beginning;
}

} // namespace

Prompt Fitted(const Prompt& prompt)
{
    Prompt fitted = prompt;
    fitted.ending = "";
    const std::string ending = Beginning(prompt.ending, {box.characters / 2, box.lineBreaks / 2});
    fitted.text =
        Beginning(prompt.text, {box.characters - host::CharacterCount(ending), box.lineBreaks - LineBreaks(ending)}) +
        ending;
    return fitted;
}

} // namespace vellumo::ui
