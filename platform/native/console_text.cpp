#include "platform/native/console_text.h"

#include <algorithm>
#include <sstream>
#include <string_view>

namespace vellumo::native
{
namespace
{

bool BeginsCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0u) != 0x80;
}

std::size_t CharactersIn(std::string_view text)
{
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), BeginsCharacter));
}

// The first `count` characters, or all when there are not more.
std::string_view First(std::string_view text, std::size_t count)
{
    std::size_t end = 0;
    for (std::size_t characters = 0; end < text.size(); ++end)
    {
        if (BeginsCharacter(text[end]) && characters++ == count)
        {
            break;
        }
    }
    return text.substr(0, end);
}

void WrapLine(std::string_view line, std::size_t width, std::vector<std::string>& lines)
{
    while (CharactersIn(line) > width)
    {
        const std::string_view first = First(line, width + 1);
        std::size_t end = first.find_last_of(' ');
        if (end == std::string_view::npos || first.find_first_not_of(' ') >= end) // no word ends here
        {
            end = First(line, width).size();
        }
        lines.emplace_back(line.substr(0, end));
        line.remove_prefix(std::min(line.find_first_not_of(' ', end), line.size()));
    }
    lines.emplace_back(line);
}

} // namespace

std::string Fitted(const std::string& text, std::size_t width)
{
    const std::size_t length = CharactersIn(text);
    return length <= width ? text + std::string(width - length, ' ') : std::string(First(text, width - 1)) + "…";
}

std::vector<std::string> Wrapped(const std::string& text, std::size_t width)
{
    std::vector<std::string> lines;
    std::istringstream in(text.substr(0, text.find_last_not_of("\r\n") + 1));
    for (std::string line; std::getline(in, line);)
    {
        std::erase(line, '\r');
        WrapLine(line, width, lines);
    }
    return lines;
}

} // namespace vellumo::native
