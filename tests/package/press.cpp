// press TITLE SECONDS [--look]
//
// Waits for a window with that title, of whatever program, and presses its default button; with --look it only waits.
// Exit code 0 when it did.
#include <windows.h>

#include <shellapi.h>

#include <array>
#include <cwchar>

namespace
{

struct Search
{
    const wchar_t* title;
    HWND found = nullptr;
};

BOOL CALLBACK Look(HWND window, LPARAM parameter)
{
    auto& search = *reinterpret_cast<Search*>(parameter);
    std::array<wchar_t, 256> text{};
    GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    search.found = IsWindowVisible(window) && std::wcscmp(text.data(), search.title) == 0 ? window : search.found;
    return search.found == nullptr;
}

} // namespace

int main()
{
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    if (count < 3)
    {
        return 2;
    }
    constexpr DWORD pause = 100; // milliseconds
    Search search{arguments[1]};
    for (long left = std::wcstol(arguments[2], nullptr, 10) * 10; left > 0 && search.found == nullptr; --left)
    {
        Sleep(pause);
        EnumWindows(Look, reinterpret_cast<LPARAM>(&search));
    }
    if (search.found == nullptr)
    {
        return 1;
    }
    if (count > 3)
    {
        return 0;
    }
    const auto button = SendMessageW(search.found, DM_GETDEFID, 0, 0);
    return HIWORD(button) == DC_HASDEFID && PostMessageW(search.found, WM_COMMAND, LOWORD(button), 0) ? 0 : 1;
}
