#include "com/registration.h"

#include "com/faults.h"
#include "com/module.h"
#include "host/version.h"
#include "platform/windows/adapters/host_fault.h"
#include "platform/windows/adapters/registry_key.h"
#include "platform/windows/system/text.h"

#include <oleauto.h>

#include <vellumo.h>

#include <array>
#include <vector>

namespace vellumo::com
{
namespace
{

using windows::ThrowIfFailed;

const std::wstring classes = L"Software\\Classes\\";
const std::wstring progId = L"Vellumo.SISSProvider";
const std::wstring versionedProgId = L"Vellumo.SISSProvider.1";
const std::wstring description = L"Provider SISS per la cartella clinica";
constexpr WORD majorVersion = 1;
constexpr WORD minorVersion = 0;

std::wstring Spell(const GUID& guid)
{
    std::array<wchar_t, 40> text{};
    StringFromGUID2(guid, text.data(), static_cast<int>(text.size()));
    return text.data();
}

std::wstring ClassKey()
{
    return L"CLSID\\" + Spell(CLSID_SISSProvider);
}

struct Entry
{
    std::wstring key;    // below the machine's classes
    const wchar_t* name; // null: the key's own value
    std::wstring text;
};

std::vector<Entry> ProgIdEntries()
{
    const std::wstring clsid = Spell(CLSID_SISSProvider);
    return {
        {progId, nullptr, description},
        {progId + L"\\CLSID", nullptr, clsid},
        {progId + L"\\CurVer", nullptr, versionedProgId},
        {versionedProgId, nullptr, description},
        {versionedProgId + L"\\CLSID", nullptr, clsid},
    };
}

std::vector<Entry> ClassEntries()
{
    const std::wstring key = ClassKey();
    return {
        {key, nullptr, description},
        {key + L"\\InprocServer32", nullptr, ModulePath()},
        {key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
        {key + L"\\ProgID", nullptr, versionedProgId},
        {key + L"\\VersionIndependentProgID", nullptr, progId},
        {key + L"\\TypeLib", nullptr, Spell(LIBID_Vellumo)},
        {key + L"\\Version", nullptr, std::to_wstring(majorVersion) + L"." + std::to_wstring(minorVersion)},
        {key + L"\\Programmable", nullptr, L""},
        // For whoever looks at the machine; nothing reads it.
        {key, L"Versione", windows::ToWide(host::version)},
    };
}

void Write(const std::vector<Entry>& entries)
{
    for (const Entry& entry : entries)
    {
        windows::RegistryKey key;
        LSTATUS status = key.Create(HKEY_LOCAL_MACHINE, classes + entry.key, KEY_SET_VALUE);
        if (status == ERROR_SUCCESS)
        {
            status = key.SetText(entry.name, entry.text);
        }
        ThrowIfFailed(HRESULT_FROM_WIN32(static_cast<DWORD>(status)), "Registrazione di Vellumo");
    }
}

// True while the library of the other bitness is registered: it shares the ProgIDs, not the class.
bool IsOtherBitnessRegistered()
{
    constexpr REGSAM otherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    BOOL emulated = FALSE;
    IsWow64Process(GetCurrentProcess(), &emulated);
    if (sizeof(void*) == 4 && !emulated)
    {
        return false; // a 32-bit system has one view only
    }
    windows::RegistryKey key;
    return key.Open(HKEY_LOCAL_MACHINE, classes + ClassKey() + L"\\InprocServer32", KEY_QUERY_VALUE | otherView) ==
           ERROR_SUCCESS;
}

HRESULT RemoveTree(const std::wstring& key)
{
    const LSTATUS status = RegDeleteTreeW(HKEY_LOCAL_MACHINE, (classes + key).c_str());
    return status == ERROR_FILE_NOT_FOUND ? S_OK : HRESULT_FROM_WIN32(static_cast<DWORD>(status));
}

HRESULT RemoveTypeLibrary()
{
    constexpr bool is64 = sizeof(void*) == 8;
    const std::wstring key = L"TypeLib\\" + Spell(LIBID_Vellumo) + L"\\1.0\\0\\" + (is64 ? L"win64" : L"win32");
    windows::RegistryKey registered;
    if (registered.Open(HKEY_LOCAL_MACHINE, classes + key, KEY_QUERY_VALUE) == ERROR_FILE_NOT_FOUND)
    {
        return S_OK;
    }
    return UnRegisterTypeLib(LIBID_Vellumo, majorVersion, minorVersion, LOCALE_NEUTRAL, is64 ? SYS_WIN64 : SYS_WIN32);
}

} // namespace

HRESULT Register() noexcept
{
    const HRESULT result =
        ResultOf(CLSID_SISSProvider,
                 []
                 {
                     Write(ClassEntries());
                     Write(ProgIdEntries());
                     ThrowIfFailed(RegisterTypeLib(LoadLibraryOf(Library::Vellumo).Get(), ModulePath().data(), nullptr),
                                   "Registrazione della libreria dei tipi");
                 });
    if (FAILED(result))
    {
        static_cast<void>(Unregister());
    }
    return result;
}

HRESULT Unregister() noexcept
{
    return ResultOf(CLSID_SISSProvider,
                    []
                    {
                        HRESULT result = RemoveTypeLibrary();
                        std::vector<std::wstring> keys{ClassKey()};
                        if (!IsOtherBitnessRegistered())
                        {
                            keys.insert(keys.end(), {progId, versionedProgId});
                        }
                        for (const std::wstring& key : keys)
                        {
                            const HRESULT removed = RemoveTree(key);
                            result = FAILED(result) ? result : removed;
                        }
                        return result;
                    });
}

} // namespace vellumo::com
