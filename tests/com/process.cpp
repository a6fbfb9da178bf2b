#include "tests/com/process.h"

#include <doctest.h>

#include <windows.h>

#include <array>
#include <vector>

namespace vellumo::tests
{
namespace
{

constexpr DWORD patience = 60'000; // milliseconds

} // namespace

Outcome Run(const std::wstring& command, const std::wstring& folder)
{
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    // A file rather than a pipe: processes that the program leaves behind would keep a pipe open.
    std::array<wchar_t, MAX_PATH> place{};
    std::array<wchar_t, MAX_PATH> file{};
    GetTempPathW(static_cast<DWORD>(place.size()), place.data());
    GetTempFileNameW(place.data(), L"vel", 0, file.data());
    const HANDLE output = CreateFileW(file.data(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      &inherited, CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    REQUIRE(output != INVALID_HANDLE_VALUE);

    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = output;
    start.hStdError = output;
    PROCESS_INFORMATION process{};
    std::vector<wchar_t> line(command.c_str(), command.c_str() + command.size() + 1);
    const BOOL started =
        CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, folder.c_str(), &start, &process);
    const DWORD error = started ? ERROR_SUCCESS : GetLastError();
    REQUIRE(error == ERROR_SUCCESS);
    const DWORD waited = WaitForSingleObject(process.hProcess, patience);
    Outcome outcome;
    GetExitCodeProcess(process.hProcess, &outcome.exitCode);
    if (waited != WAIT_OBJECT_0)
    {
        TerminateProcess(process.hProcess, 1);
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);

    SetFilePointer(output, 0, nullptr, FILE_BEGIN);
    std::array<char, 4096> bytes{};
    for (DWORD count = 0; ReadFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) && count;)
    {
        outcome.output.append(bytes.data(), count);
    }
    CloseHandle(output);
    REQUIRE(waited == WAIT_OBJECT_0);
    return outcome;
}

} // namespace vellumo::tests
