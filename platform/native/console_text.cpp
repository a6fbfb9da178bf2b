#include "platform/native/console_text.h"

#include "host/text.h"

#include <algorithm>
#include <sstream>
#include <string_view>

namespace vellumo::native
{
namespace
{

void WrapLine(std::string_view line, std::size_t width, std::vector<std::string>& lines)
{
    while (host::CharacterCount(line) > width)
    {
        const std::string first = host::FirstCharacters(line, width + 1);
        std::size_t end = first.find_last_of(' ');
        if (end == std::string_view::npos || first.find_first_not_of(' ') >= end) // no word ends here
        {
            end = host::FirstCharacters(line, width).size();
        }
        lines.emplace_back(line.substr(0, end));
        line.remove_prefix(std::min(line.find_first_not_of(' ', end), line.size()));
    }
    lines.emplace_back(line);
}

} // namespace

std::string Fitted(const std::string& text, std::size_t width)
{
    const std::size_t length = host::CharacterCount(text);
    return length <= width ? text + std::string(width - length, ' ') : host::FirstCharacters(text, width - 1) + "…";
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
