// screen_reader TITLE FILE: reads a window of another process as a screen reader does and writes what it found.
#include "platform/windows/system/text.h"
#include "tests/platform/windows/reader/accessible_tree.h"

#include <windows.h>
// After windows.h.
#include <objbase.h>
#include <shellapi.h>

#include <filesystem>
#include <fstream>

int main()
{
    int count = 0;
    LPWSTR* const words = CommandLineToArgvW(GetCommandLineW(), &count);
    const HWND window = count == 3 ? FindWindowW(nullptr, words[1]) : nullptr;
    if (window == nullptr || FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
    {
        return 2;
    }
    std::ofstream out(std::filesystem::path(words[2]), std::ios::binary);
    for (const auto& line : vellumo::tests::AccessibleTree(window))
    {
        out << line << '\n';
    }
    CoUninitialize();
    return out ? 0 : 1;
}
