#include "platform/windows/adapters/registry_settings_store.h"

#include "host/fault.h"
#include "platform/windows/adapters/registry_key.h"
#include "platform/windows/system/text.h"

#include <array>

namespace vellumo::windows
{
namespace
{

constexpr std::size_t longestText = 255;

#ifdef _WIN64
constexpr std::array<REGSAM, 2> views = {KEY_WOW64_64KEY, KEY_WOW64_32KEY};
#else
constexpr std::array<REGSAM, 1> views = {0};
#endif

std::optional<std::string> ReadText(HKEY root, std::string_view key, std::string_view name)
{
    std::array<wchar_t, longestText + 1> text{};
    auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    if (RegGetValueW(root, ToWide(key).c_str(), ToWide(name).c_str(), RRF_RT_REG_SZ, nullptr, text.data(), &bytes) !=
        ERROR_SUCCESS)
    {
        return std::nullopt;
    }
    return FromWide(text.data());
}

} // namespace

std::optional<std::string> RegistrySettingsStore::ReadMachineText(std::string_view key, std::string_view name)
{
    return ReadText(HKEY_LOCAL_MACHINE, key, name);
}

std::optional<std::string> RegistrySettingsStore::ReadUserText(std::string_view key, std::string_view name)
{
    return ReadText(HKEY_CURRENT_USER, key, name);
}

// A 64-bit program writes for readers of either bitness: the key is where its own reader has made it, in one view of
// the registry or in both. A 32-bit one writes where all 32-bit programs read.
void RegistrySettingsStore::WriteMachineText(std::string_view key, std::string_view name, std::string_view text)
{
    LSTATUS status = ERROR_FILE_NOT_FOUND;
    for (const REGSAM view : views)
    {
        RegistryKey opened;
        const LSTATUS found = opened.Open(HKEY_LOCAL_MACHINE, ToWide(key), KEY_SET_VALUE | view);
        if (found != ERROR_FILE_NOT_FOUND && (status == ERROR_FILE_NOT_FOUND || status == ERROR_SUCCESS))
        {
            status = found == ERROR_SUCCESS ? opened.SetText(ToWide(name).c_str(), ToWide(text)) : found;
        }
    }
    if (status != ERROR_SUCCESS)
    {
        throw host::Fault("Impossibile scrivere nel registro di sistema la chiave HKEY_LOCAL_MACHINE\\" +
                              std::string(key) + ".",
                          HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
    }
}

} // namespace vellumo::windows
