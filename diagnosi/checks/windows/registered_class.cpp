#include "diagnosi/checks/windows/registered_class.h"

#include "host/text.h"
#include "platform/windows/adapters/registry_key.h"
#include "platform/windows/system/text.h"

#include <vector>

namespace vellumo::diagnosi
{
namespace
{

REGSAM ViewOf(Bitness bitness)
{
    if (!HasOtherBitness())
    {
        return 0; // the only one
    }
    return (bitness == Bitness::This) == is64BitProgram ? KEY_WOW64_64KEY : KEY_WOW64_32KEY;
}

// The program of a command line.
std::string ProgramOf(const std::string& command)
{
    if (command.starts_with('"'))
    {
        return command.substr(1, command.find('"', 1) - 1);
    }
    constexpr std::string_view ending = ".exe";
    const auto end = host::WithoutCase(command).find(ending);
    return end == std::string::npos ? command : command.substr(0, end + ending.size());
}

// Of this user, who may have his own, or of the machine.
std::optional<std::string> ClassesText(const std::string& key, Bitness bitness)
{
    const std::string path = "Software\\Classes\\" + key;
    auto own = RegistryText(HKEY_CURRENT_USER, path, nullptr, bitness);
    return own ? own : RegistryText(HKEY_LOCAL_MACHINE, path, nullptr, bitness);
}

} // namespace

const char* NameOf(Bitness bitness) noexcept
{
    return (bitness == Bitness::This) == is64BitProgram ? "64 bit" : "32 bit";
}

bool HasOtherBitness()
{
    BOOL emulated = FALSE;
    IsWow64Process(GetCurrentProcess(), &emulated);
    return is64BitProgram || emulated != FALSE;
}

std::optional<std::string> RegistryText(HKEY root, const std::string& key, const char* name, Bitness bitness)
{
    if (bitness == Bitness::Other && !HasOtherBitness())
    {
        return std::nullopt;
    }
    windows::RegistryKey opened;
    const std::wstring value = windows::ToWide(name == nullptr ? "" : name);
    DWORD bytes = 0;
    if (opened.Open(root, windows::ToWide(key), KEY_QUERY_VALUE | ViewOf(bitness)) != ERROR_SUCCESS ||
        RegGetValueW(opened.Get(), nullptr, value.c_str(), RRF_RT_REG_SZ, nullptr, nullptr, &bytes) != ERROR_SUCCESS)
    {
        return std::nullopt;
    }
    std::vector<wchar_t> text(bytes / sizeof(wchar_t) + 1);
    if (RegGetValueW(opened.Get(), nullptr, value.c_str(), RRF_RT_REG_SZ, nullptr, text.data(), &bytes) !=
        ERROR_SUCCESS)
    {
        return std::nullopt;
    }
    return windows::FromWide(text.data());
}

bool HasRegistryKey(HKEY root, const std::string& key, Bitness bitness)
{
    windows::RegistryKey opened;
    return (bitness == Bitness::This || HasOtherBitness()) &&
           opened.Open(root, windows::ToWide(key), KEY_QUERY_VALUE | ViewOf(bitness)) == ERROR_SUCCESS;
}

std::optional<std::string> ClassOf(const std::string& progId, Bitness bitness)
{
    return ClassesText(progId + "\\CLSID", bitness);
}

std::optional<Server> ServerOf(const std::string& classId, Bitness bitness)
{
    const std::string key = "CLSID\\" + classId;
    if (const auto file = ClassesText(key + "\\InprocServer32", bitness))
    {
        return Server{*file};
    }
    const auto command = ClassesText(key + "\\LocalServer32", bitness);
    return command ? std::optional(Server{ProgramOf(*command), true}) : std::nullopt;
}

} // namespace vellumo::diagnosi
