// Texts for the clipboard.
#pragma once

#include <windows.h>

#include <string_view>

namespace vellumo::windows
{

// Replaces what is in the clipboard. Does nothing while another program holds it.
void CopyText(std::wstring_view text, HWND owner) noexcept;

} // namespace vellumo::windows
