#include "player/apart.h"

#include "host/fault.h"
#include "platform/windows/system/text.h"

#include <windows.h>

#include <array>
#include <cstdlib>

namespace vellumo::player
{

int DoApart(const std::vector<std::string>& words, const std::function<void()>&)
{
    std::array<wchar_t, 32768> program{};
    GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    std::wstring line = L"\"" + std::wstring(program.data()) + L"\"";
    for (const auto& word : words)
    {
        line += L" \"" + windows::ToWide(word) + L"\"";
    }
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process) == FALSE)
    {
        throw host::Fault("a process of its own could not be made");
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(code);
}

void EndProcess(int code)
{
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
    std::abort(); // it has ended
}

} // namespace vellumo::player
