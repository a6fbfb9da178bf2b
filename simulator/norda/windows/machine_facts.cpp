// What the report of the acceptance kit says of the machine.
#include "platform/windows/adapters/registry_key.h"
#include "platform/windows/system/text.h"
#include "simulator/norda/workstation.h"

#include <windows.h>
// After windows.h.
#include <objbase.h>

#include <array>
#include <bit>
#include <cstdint>

namespace vellumo::norda
{
namespace
{

std::string RegistryText(HKEY root, const std::wstring& path, const wchar_t* name)
{
    std::array<wchar_t, 1024> text{};
    DWORD bytes = sizeof text;
    const auto status = RegGetValueW(root, path.c_str(), name, RRF_RT_REG_SZ, nullptr, text.data(), &bytes);
    return status == ERROR_SUCCESS ? windows::FromWide(text.data()) : std::string();
}

std::uint32_t RegistryNumber(HKEY root, const std::wstring& path, const wchar_t* name)
{
    DWORD number = 0;
    DWORD bytes = sizeof number;
    return RegGetValueW(root, path.c_str(), name, RRF_RT_REG_DWORD, nullptr, &number, &bytes) == ERROR_SUCCESS ? number
                                                                                                               : 0;
}

std::string FileVersion(const std::wstring& file)
{
    DWORD unused = 0;
    std::vector<std::byte> data(GetFileVersionInfoSizeW(file.c_str(), &unused));
    void* found = nullptr;
    UINT size = 0;
    if (data.empty() || GetFileVersionInfoW(file.c_str(), 0, static_cast<DWORD>(data.size()), data.data()) == FALSE ||
        VerQueryValueW(data.data(), L"\\", &found, &size) == FALSE)
    {
        return "versione sconosciuta";
    }
    const auto& info = *static_cast<const VS_FIXEDFILEINFO*>(found);
    return std::to_string(HIWORD(info.dwFileVersionMS)) + '.' + std::to_string(LOWORD(info.dwFileVersionMS)) + '.' +
           std::to_string(HIWORD(info.dwFileVersionLS)) + '.' + std::to_string(LOWORD(info.dwFileVersionLS));
}

// "1.2.3.4, C:\folder\file.dll"; "" where the class is not registered for programs of this bitness.
std::string ServerOf(const wchar_t* progId)
{
    CLSID clsid{};
    std::array<wchar_t, 40> spelled{};
    if (FAILED(CLSIDFromProgID(progId, &clsid)) ||
        StringFromGUID2(clsid, spelled.data(), static_cast<int>(spelled.size())) == 0)
    {
        return {};
    }
    auto file =
        RegistryText(HKEY_CLASSES_ROOT, L"CLSID\\" + std::wstring(spelled.data()) + L"\\InprocServer32", nullptr);
    if (file.empty())
    {
        return {};
    }
    std::array<wchar_t, 1024> whole{}; // a bare name is one of the system's folder
    const DWORD length = SearchPathW(nullptr, windows::ToWide(file).c_str(), nullptr, static_cast<DWORD>(whole.size()),
                                     whole.data(), nullptr);
    if (length > 0 && length < whole.size())
    {
        file = windows::FromWide(whole.data());
    }
    return FileVersion(windows::ToWide(file)) + ", " + file;
}

// "" where it is Windows.
std::string WineVersion()
{
    const auto routine = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version");
    return routine == nullptr ? "" : std::bit_cast<const char*(__cdecl*)()>(routine)();
}

} // namespace

std::vector<std::pair<std::string, std::string>> MachineFacts()
{
    const std::wstring system = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
    const auto name = RegistryText(HKEY_LOCAL_MACHINE, system, L"ProductName");
    const auto build = RegistryText(HKEY_LOCAL_MACHINE, system, L"CurrentBuild");
    const auto update = std::to_string(RegistryNumber(HKEY_LOCAL_MACHINE, system, L"UBR"));
    std::array<wchar_t, LOCALE_NAME_MAX_LENGTH> language{};
    GetUserDefaultLocaleName(language.data(), static_cast<int>(language.size()));
    const bool known = SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    const auto reader = ServerOf(L"Msxml2.SAXXMLReader.6.0"); // the library's choice, too
    std::vector<std::pair<std::string, std::string>> facts = {
        {"Sistema", name + ", build " + build + '.' + update + ", lingua " + windows::FromWide(language.data())},
        {"Programma", sizeof(void*) == 8 ? "64 bit" : "32 bit"},
        {"Vellumo", ServerOf(L"Vellumo.SISSProvider")},
        {"MSXML", reader.empty() ? ServerOf(L"Msxml2.SAXXMLReader.3.0") : reader},
    };
    if (known)
    {
        CoUninitialize();
    }
    if (const auto wine = WineVersion(); !wine.empty())
    {
        facts.emplace_back("Wine", wine);
    }
    return facts;
}

} // namespace vellumo::norda
