#include "platform/windows/system/text.h"

#include <windows.h>

#include <limits>
#include <stdexcept>

namespace vellumo::windows
{
namespace
{

int LengthFor(std::size_t length)
{
    if (length > static_cast<std::size_t>(std::numeric_limits<int>::max()))
    {
        throw std::length_error("text");
    }
    return static_cast<int>(length);
}

} // namespace

std::wstring ToWide(std::string_view text)
{
    std::wstring wide;
    if (!text.empty())
    {
        const int length = LengthFor(text.size());
        const int needed = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
        wide.resize(static_cast<std::size_t>(needed));
        MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), needed);
    }
    return wide;
}

std::string FromWide(std::wstring_view text)
{
    std::string narrow;
    if (!text.empty())
    {
        const int length = LengthFor(text.size());
        const int needed = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
        narrow.resize(static_cast<std::size_t>(needed));
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(), needed, nullptr, nullptr);
    }
    return narrow;
}

bool IsUtf8(std::string_view text)
{
    return text.empty() ||
           MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), LengthFor(text.size()), nullptr, 0) != 0;
}

bool EqualsIgnoringCase(std::wstring_view left, std::wstring_view right)
{
    return CompareStringOrdinal(left.data(), LengthFor(left.size()), right.data(), LengthFor(right.size()), TRUE) ==
           CSTR_EQUAL;
}

} // namespace vellumo::windows
