#include "package/acceptance/test_machine.h"

#include "host/fault.h"
#include "platform/windows/adapters/host_names.h"
#include "platform/windows/adapters/registry_key.h"
#include "platform/windows/adapters/registry_settings_store.h"
#include "platform/windows/system/text.h"
#include "simulator/norda/practice.h"

#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>

#include <algorithm>
#include <array>

namespace vellumo::acceptance
{
namespace
{

namespace keys = norda::keys;
constexpr std::array<REGSAM, 2> views = {KEY_WOW64_32KEY, KEY_WOW64_64KEY};

bool HasClass(const std::wstring& progId)
{
    for (const REGSAM view : views)
    {
        windows::RegistryKey key;
        if (key.Open(HKEY_CLASSES_ROOT, progId + L"\\CLSID", KEY_QUERY_VALUE | view) == ERROR_SUCCESS)
        {
            return true;
        }
    }
    return false;
}

// The SISS client's installation leaves its key with values; scenarios leave it empty.
bool HasIdentity()
{
    for (const REGSAM view : views)
    {
        windows::RegistryKey key;
        DWORD values = 0;
        if (key.Open(HKEY_LOCAL_MACHINE, windows::ToWide(keys::hostIdentity), KEY_QUERY_VALUE | view) ==
                ERROR_SUCCESS &&
            RegQueryInfoKeyW(key.Get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &values, nullptr, nullptr,
                             nullptr, nullptr) == ERROR_SUCCESS &&
            values > 0)
        {
            return true;
        }
    }
    return false;
}

// The key, and those above it, as far as there is nothing in them.
void RemoveEmpty(HKEY root, std::wstring path, REGSAM view = 0)
{
    for (;;)
    {
        windows::RegistryKey key;
        DWORD keys = 0;
        DWORD values = 0;
        if (key.Open(root, path, KEY_QUERY_VALUE | view) != ERROR_SUCCESS ||
            RegQueryInfoKeyW(key.Get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, nullptr, nullptr,
                             nullptr, nullptr) != ERROR_SUCCESS ||
            keys + values > 0 || RegDeleteKeyExW(root, path.c_str(), view, 0) != ERROR_SUCCESS)
        {
            return;
        }
        path.erase(std::min(path.rfind(L'\\'), path.size()));
    }
}

void PutBack(HKEY root, std::string_view path, const std::optional<std::string>& text)
{
    windows::RegistryKey key;
    const auto name = windows::ToWide(keys::path);
    if (text && key.Create(root, windows::ToWide(path), KEY_SET_VALUE) == ERROR_SUCCESS)
    {
        static_cast<void>(key.SetText(name.c_str(), windows::ToWide(*text)));
    }
    else if (!text && key.Open(root, windows::ToWide(path), KEY_SET_VALUE) == ERROR_SUCCESS)
    {
        RegDeleteValueW(key.Get(), name.c_str());
        key = {};
        RemoveEmpty(root, windows::ToWide(path));
    }
}

} // namespace

TestMachine::TestMachine()
    : m_hostFolder(windows::RegistrySettingsStore().ReadMachineText(keys::hostProgram, keys::path))
    , m_sissFolder(windows::RegistrySettingsStore().ReadUserText(keys::sissClient, keys::path))
{
}

TestMachine::~TestMachine()
{
    PutBack(HKEY_LOCAL_MACHINE, keys::hostProgram, m_hostFolder);
    PutBack(HKEY_CURRENT_USER, keys::sissClient, m_sissFolder);
    for (const REGSAM view : views)
    {
        RemoveEmpty(HKEY_LOCAL_MACHINE, windows::ToWide(keys::hostIdentity), view);
    }
}

std::optional<std::string> TestMachine::WhyNot()
{
    if (IsUserAnAdmin() == FALSE)
    {
        return "Servono i diritti di amministratore: aprire il prompt dei comandi con \"Esegui come amministratore\" e "
               "avviare di nuovo prova.cmd.";
    }
    if (HasClass(windows::names::bridgeProgId.text) || HasIdentity())
    {
        return "Su questo computer è installato il client SISS, o è aperto quello simulato (siss-simulato): la prova "
               "prende il suo posto, perciò si fa su un computer di prova che non lo abbia.";
    }
    if (HasClass(windows::names::patientProgId.text) || HasClass(windows::names::settingsProgId.text))
    {
        return "Su questo computer è installato il programma di cartella clinica: la prova prende il suo posto, perciò "
               "si fa su un computer di prova che non lo abbia.";
    }
    return std::nullopt;
}

} // namespace vellumo::acceptance
