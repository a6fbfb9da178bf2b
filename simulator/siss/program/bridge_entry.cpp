#include "simulator/siss/program/bridge_entry.h"

#include "host/fault.h"
#include "platform/windows/adapters/host_fault.h"
#include "platform/windows/adapters/host_names.h"
#include "platform/windows/adapters/registry_key.h"
#include "platform/windows/system/text.h"
#include "simulator/norda/windows/class_objects.h"

#include <windows.h>

#include <array>
#include <utility>

namespace vellumo::siss
{
namespace
{

const std::wstring classes = L"Software\\Classes\\";

std::wstring ProgIdKey()
{
    return classes + windows::names::bridgeProgId.text + L"\\CLSID";
}

std::wstring ClassId()
{
    std::array<wchar_t, 40> text{};
    StringFromGUID2(norda::bridgeClass, text.data(), static_cast<int>(text.size()));
    return text.data();
}

// "" where nothing is registered.
std::wstring Registered(HKEY root, REGSAM view)
{
    std::array<wchar_t, 64> text{};
    auto bytes = static_cast<DWORD>((text.size() - 1) * sizeof(wchar_t));
    windows::RegistryKey key;
    if (key.Open(root, ProgIdKey(), KEY_QUERY_VALUE | view) != ERROR_SUCCESS ||
        RegQueryValueExW(key.Get(), nullptr, nullptr, nullptr, reinterpret_cast<BYTE*>(text.data()), &bytes) !=
            ERROR_SUCCESS)
    {
        return {};
    }
    return text.data();
}

void Set(const std::wstring& path, const std::wstring& text)
{
    windows::RegistryKey key;
    LSTATUS status = key.Create(HKEY_CURRENT_USER, classes + path, KEY_SET_VALUE);
    if (status == ERROR_SUCCESS)
    {
        status = key.SetText(nullptr, text);
    }
    windows::ThrowIfFailed(HRESULT_FROM_WIN32(static_cast<DWORD>(status)),
                           "HKEY_CURRENT_USER\\" + windows::FromWide(classes + path));
}

} // namespace

BridgeEntry::BridgeEntry(std::wstring server)
    : m_server(std::move(server))
{
}

void BridgeEntry::Write() const
{
    for (const HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE})
    {
        for (const REGSAM view : {REGSAM{KEY_WOW64_32KEY}, REGSAM{KEY_WOW64_64KEY}})
        {
            const std::wstring found = Registered(root, view);
            if (!found.empty() && found != ClassId())
            {
                throw host::Fault("Su questo computer è registrato un altro componente " +
                                  windows::FromWide(windows::names::bridgeProgId.text) +
                                  ": il simulatore non prende il posto di un client SISS vero. Usare un computer senza "
                                  "client SISS.");
            }
        }
    }
    Set(std::wstring(windows::names::bridgeProgId.text) + L"\\CLSID", ClassId());
    Set(L"CLSID\\" + ClassId(), L"SISS simulato di Vellumo");
    Set(L"CLSID\\" + ClassId() + L"\\LocalServer32", m_server);
}

void BridgeEntry::Remove() noexcept
{
    if (Registered(HKEY_CURRENT_USER, 0) == ClassId())
    {
        RegDeleteTreeW(HKEY_CURRENT_USER, (classes + windows::names::bridgeProgId.text).c_str());
    }
    RegDeleteTreeW(HKEY_CURRENT_USER, (classes + L"CLSID\\" + ClassId()).c_str());
}

} // namespace vellumo::siss
