#include "platform/windows/forms/abridged.h"

#include "platform/windows/system/text.h"

#include <windows.h>

namespace vellumo::windows
{

std::wstring Abridged(std::string_view text)
{
    constexpr std::size_t longest = 5000; // UTF-16 units; some hundred lines are more than anybody reads
    constexpr std::size_t mostBytes = 3; // of a UTF-16 unit; what this cuts in two stands beyond the longest
    std::wstring wide = ToWide(text.substr(0, mostBytes * (longest + 2)));
    if (wide.size() > longest)
    {
        wide.resize(longest);
        if (IS_HIGH_SURROGATE(wide.back()))
        {
            wide.pop_back();
        }
        wide += L'…';
    }
    return wide;
}

} // namespace vellumo::windows
