#include "platform/windows/forms/abridged.h"

#include "platform/windows/system/text.h"

#include <windows.h>

namespace vellumo::windows
{

std::wstring Abridged(std::string_view text)
{
    constexpr std::size_t mostBytes = 3; // of a UTF-16 unit; what this cuts in two stands beyond the longest
    std::wstring wide = ToWide(text.substr(0, mostBytes * (longestInAWindow + 2)));
    if (wide.size() > longestInAWindow)
    {
        wide.resize(longestInAWindow);
        if (IS_HIGH_SURROGATE(wide.back()))
        {
            wide.pop_back();
        }
        wide += L'…';
    }
    return wide;
}

} // namespace vellumo::windows
