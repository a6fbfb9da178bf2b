#include "platform/windows/forms/clipboard.h"

#include <cwchar>

namespace vellumo::windows
{
namespace
{

// Null without memory.
HGLOBAL MemoryWith(std::wstring_view text) noexcept
{
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    if (memory != nullptr)
    {
        auto* const copy = static_cast<wchar_t*>(GlobalLock(memory));
        std::wmemcpy(copy, text.data(), text.size());
        copy[text.size()] = L'\0';
        GlobalUnlock(memory);
    }
    return memory;
}

} // namespace

void CopyText(std::wstring_view text, HWND owner) noexcept
{
    if (OpenClipboard(owner) == FALSE)
    {
        return;
    }
    EmptyClipboard();
    const HGLOBAL memory = MemoryWith(text);
    if (memory != nullptr && SetClipboardData(CF_UNICODETEXT, memory) == nullptr) // else it is the system's
    {
        GlobalFree(memory);
    }
    CloseClipboard();
}

} // namespace vellumo::windows
