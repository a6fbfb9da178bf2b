// chi_usa FILE
//
// Names the programs of this bitness that have the library FILE loaded, one a line: "Norda.exe (1234)". Exit code 1
// when there is one, 0 when there is none, 2 when this could not be found out. The installer asks before it replaces
// the library.
#include <windows.h>

#include <shellapi.h>
#include <tlhelp32.h>

#include <array>
#include <cstdio>
#include <cwchar>
#include <string>

namespace
{

class Snapshot
{
public:
    Snapshot(DWORD what, DWORD process)
        : m_handle(CreateToolhelp32Snapshot(what, process))
    {
    }
    ~Snapshot()
    {
        if (IsGood())
        {
            CloseHandle(m_handle);
        }
    }
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;

    [[nodiscard]] bool IsGood() const { return m_handle != INVALID_HANDLE_VALUE; }
    [[nodiscard]] HANDLE Get() const { return m_handle; }

private:
    HANDLE m_handle;
};

// Short and long names, and other spellings of one folder, are the same.
std::wstring LongPath(const wchar_t* path)
{
    std::array<wchar_t, 32768> text{};
    std::array<wchar_t, 32768> full{};
    if (GetLongPathNameW(path, text.data(), static_cast<DWORD>(text.size())) == 0)
    {
        std::wcsncpy(text.data(), path, text.size() - 1);
    }
    GetFullPathNameW(text.data(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    return full.data();
}

bool HasLoaded(DWORD process, const std::wstring& library)
{
    // A process that is just starting has no list yet, and says so with this error.
    for (int attempt = 0; attempt < 10; ++attempt)
    {
        const Snapshot modules(TH32CS_SNAPMODULE, process);
        if (!modules.IsGood() && GetLastError() == ERROR_BAD_LENGTH)
        {
            continue;
        }
        MODULEENTRY32W module{};
        module.dwSize = sizeof(module);
        for (BOOL more = modules.IsGood() && Module32FirstW(modules.Get(), &module); more;
             more = Module32NextW(modules.Get(), &module))
        {
            if (_wcsicmp(LongPath(module.szExePath).c_str(), library.c_str()) == 0)
            {
                return true;
            }
        }
        return false;
    }
    return false;
}

int List(const std::wstring& library)
{
    const Snapshot processes(TH32CS_SNAPPROCESS, 0);
    if (!processes.IsGood())
    {
        return 2;
    }
    int result = 0;
    PROCESSENTRY32W process{};
    process.dwSize = sizeof(process);
    for (BOOL more = Process32FirstW(processes.Get(), &process); more; more = Process32NextW(processes.Get(), &process))
    {
        if (process.th32ProcessID != GetCurrentProcessId() && HasLoaded(process.th32ProcessID, library))
        {
            std::printf("%ls (%lu)\r\n", process.szExeFile, process.th32ProcessID);
            result = 1;
        }
    }
    return result;
}

} // namespace

int main()
{
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    return count == 2 ? List(LongPath(arguments[1])) : 2;
}
