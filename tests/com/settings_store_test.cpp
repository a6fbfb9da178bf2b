// Settings in the Windows registry.
#include "host/fault.h"
#include "platform/windows/adapters/registry_key.h"
#include "platform/windows/adapters/registry_settings_store.h"

#include <doctest.h>

#include <algorithm>
#include <vector>

using namespace vellumo;

TEST_CASE("settings are texts of at most 255 characters")
{
    const std::wstring path = L"Software\\Vellumo.Tests";
    const std::string key = "Software\\Vellumo.Tests";
    windows::RegistryKey writer;
    REQUIRE(writer.Create(HKEY_CURRENT_USER, path, KEY_SET_VALUE) == ERROR_SUCCESS);
    REQUIRE(writer.SetText(L"Path", L"C:\\Città") == ERROR_SUCCESS);
    REQUIRE(writer.SetText(L"Longest", std::wstring(255, L'x')) == ERROR_SUCCESS);
    REQUIRE(writer.SetText(L"TooLong", std::wstring(256, L'x')) == ERROR_SUCCESS);
    REQUIRE(writer.SetText(L"Empty", L"") == ERROR_SUCCESS);
    const DWORD number = 7;
    REQUIRE(RegSetValueExW(writer.Get(), L"Number", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number),
                           sizeof number) == ERROR_SUCCESS);
    SetEnvironmentVariableW(L"VELLUMO_TEST", L"D:\\Norda");
    const std::wstring variable = L"%VELLUMO_TEST%\\SISS";
    REQUIRE(RegSetValueExW(writer.Get(), L"Expand", 0, REG_EXPAND_SZ, reinterpret_cast<const BYTE*>(variable.c_str()),
                           static_cast<DWORD>((variable.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS);

    windows::RegistrySettingsStore store;
    CHECK(store.ReadUserText(key, "Path") == "C:\\Città");
    CHECK(store.ReadUserText(key, "path") == "C:\\Città");
    CHECK(store.ReadUserText(key, "Longest") == std::string(255, 'x'));
    CHECK(store.ReadUserText(key, "Empty") == "");
    CHECK(store.ReadUserText(key, "Expand") == "D:\\Norda\\SISS");
    for (const char* name : {"TooLong", "Number", "Missing"})
    {
        CAPTURE(name);
        CHECK_FALSE(store.ReadUserText(key, name));
    }
    CHECK_FALSE(store.ReadMachineText(key, "Path"));
    // A key that nobody made is not made here: the library does not install the SISS client.
    CHECK_THROWS_AS(store.WriteMachineText(key, "NOME", "x"), host::Fault);
    REQUIRE(RegDeleteTreeW(HKEY_CURRENT_USER, path.c_str()) == ERROR_SUCCESS);
}

#ifdef _WIN64
TEST_CASE("a value for all programs is written where its key is: in either view of the registry, or in both")
{
    const std::wstring path = L"Software\\Vellumo.Tests.Views";
    windows::RegistrySettingsStore store;
    for (const std::vector<REGSAM>& views :
         {std::vector<REGSAM>{KEY_WOW64_64KEY}, {KEY_WOW64_32KEY}, {KEY_WOW64_64KEY, KEY_WOW64_32KEY}})
    {
        CAPTURE(views.size());
        for (const REGSAM view : views)
        {
            windows::RegistryKey made;
            REQUIRE(made.Create(HKEY_LOCAL_MACHINE, path, KEY_SET_VALUE | view) == ERROR_SUCCESS);
        }
        store.WriteMachineText("Software\\Vellumo.Tests.Views", "NOME", "NordaG");
        for (const REGSAM view : std::vector<REGSAM>{KEY_WOW64_64KEY, KEY_WOW64_32KEY})
        {
            windows::RegistryKey reader;
            const bool isThere = reader.Open(HKEY_LOCAL_MACHINE, path, KEY_QUERY_VALUE | view) == ERROR_SUCCESS;
            CHECK(isThere == (std::ranges::count(views, view) == 1)); // nobody else's key is made
            CHECK((RegQueryValueExW(reader.Get(), L"NOME", nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS) ==
                  isThere);
            if (isThere)
            {
                REQUIRE(RegDeleteKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), view, 0) == ERROR_SUCCESS);
            }
        }
    }
}
#endif
