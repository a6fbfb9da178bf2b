#include "simulator/norda/platform.h"

#include <windows.h>

#include <array>
#include <cstring>

namespace vellumo::norda
{
namespace
{

std::string ToUtf8(const std::wstring& text)
{
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), utf8.data(), size, nullptr, nullptr);
    return utf8;
}

} // namespace

std::filesystem::path ProgramFolder()
{
    std::array<wchar_t, 32768> file{};
    GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()));
    return std::filesystem::path(file.data()).parent_path();
}

// Wine's ODBC manager loads the drivers of the system below, which know no drive letters. Wine itself tells how a file
// is called there.
std::string DriverPath(const std::filesystem::path& file)
{
    using ToUnix = char*(__cdecl*)(const wchar_t*);
    const auto whole = std::filesystem::absolute(file).wstring();
    ToUnix toUnix = nullptr;
    const auto routine = GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name");
    static_assert(sizeof toUnix == sizeof routine);
    std::memcpy(&toUnix, &routine, sizeof toUnix);
    if (toUnix == nullptr)
    {
        return ToUtf8(whole);
    }
    char* const unixName = toUnix(whole.c_str());
    const std::string name = unixName == nullptr ? ToUtf8(whole) : unixName;
    HeapFree(GetProcessHeap(), 0, unixName);
    return name;
}

} // namespace vellumo::norda
