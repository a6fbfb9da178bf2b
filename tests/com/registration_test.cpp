// Registration as an installer does it, and what a script host then finds.
#include "platform/windows/adapters/host_names.h"
#include "platform/windows/adapters/registry_key.h"
#include "simulator/norda/windows/class_objects.h"
#include "tests/com/library.h"
#include "tests/com/process.h"

#include <doctest.h>

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <vector>

using namespace vellumo;
using namespace vellumo::tests;

namespace
{

Outcome Regsvr32(const std::wstring& options)
{
    // A leading "/" is an option to it, so the DLL is named from its own folder.
    return Run(L"regsvr32.exe /s " + options + L" Vellumo.dll", LibraryPath().parent_path().wstring());
}

bool IsRegistered()
{
    windows::RegistryKey key;
    return key.Open(HKEY_CLASSES_ROOT, L"Vellumo.SISSProvider\\CLSID", KEY_QUERY_VALUE) == ERROR_SUCCESS;
}

// Puts back what stood there before the test.
class RegistrationKept
{
public:
    RegistrationKept() = default;
    ~RegistrationKept() { static_cast<void>(Regsvr32(m_registered ? L"" : L"/u")); }
    RegistrationKept(const RegistrationKept&) = delete;
    RegistrationKept& operator=(const RegistrationKept&) = delete;

private:
    bool m_registered = IsRegistered();
};

// The keys below `key` as paths, `levels` of them: whatever a class, an interface, a library or a program name leaves
// behind begins there. The 32-bit classes lie a level lower in the x64 registry.
void Collect(HKEY key, const std::wstring& path, int levels, std::set<std::wstring>& paths)
{
    std::array<wchar_t, 256> name{}; // a key's name is no longer
    for (DWORD index = 0;; ++index)
    {
        auto length = static_cast<DWORD>(name.size());
        if (RegEnumKeyExW(key, index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
        {
            break;
        }
        const std::wstring below = path + L"\\" + name.data();
        paths.insert(below);
        const int further = below == L"\\Wow6432Node" ? levels : levels - 1;
        windows::RegistryKey child;
        if (further > 0 && child.Open(key, name.data(), KEY_READ) == ERROR_SUCCESS)
        {
            Collect(child.Get(), below, further, paths);
        }
    }
}

std::set<std::wstring> Classes()
{
    windows::RegistryKey key;
    REQUIRE(key.Open(HKEY_LOCAL_MACHINE, L"Software\\Classes", KEY_READ) == ERROR_SUCCESS);
    std::set<std::wstring> paths;
    Collect(key.Get(), L"", 2, paths);
    return paths;
}

std::wstring TextOf(const GUID& id)
{
    std::array<wchar_t, 39> text{};
    StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
    return text.data();
}

std::string DefaultOf(const std::wstring& path, const wchar_t* name = nullptr)
{
    std::array<wchar_t, 1024> text{};
    auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    RegGetValueW(HKEY_CLASSES_ROOT, path.c_str(), name, RRF_RT_REG_SZ, nullptr, text.data(), &bytes);
    return windows::FromWide(text.data());
}

std::wstring ScriptFile(const wchar_t* name)
{
    return L"cscript.exe //nologo " + std::wstring(windows::ToWide(VELLUMO_SCRIPTS)) + L"\\" + name;
}

// The bridge as a program of its own, since a script host is another process.
class BridgeRegistered
{
public:
    BridgeRegistered()
    {
        const auto program = LibraryPath().parent_path() / L"siss-simulato.exe";
        norda::WriteProgId(windows::names::bridgeProgId.text, norda::bridgeClass,
                           L"\"" + program.wstring() + L"\" --senza-finestra");
    }
    ~BridgeRegistered() { norda::RemoveProgId(windows::names::bridgeProgId.text, norda::bridgeClass); }
    BridgeRegistered(const BridgeRegistered&) = delete;
    BridgeRegistered& operator=(const BridgeRegistered&) = delete;
};

} // namespace

TEST_CASE("registering writes what hosts look for, unregistering leaves no trace")
{
    const RegistrationKept kept;
    REQUIRE(Regsvr32(L"/u").exitCode == 0); // succeeds also where there is nothing to take away
    const auto before = Classes();
    REQUIRE(Regsvr32(L"").exitCode == 0);
    REQUIRE(Regsvr32(L"").exitCode == 0); // a second time changes nothing

    CLSID clsid{};
    CHECK(CLSIDFromProgID(L"Vellumo.SISSProvider", &clsid) == S_OK);
    CHECK(clsid == CLSID_SISSProvider);
    CHECK(CLSIDFromProgID(L"Vellumo.SISSProvider.1", &clsid) == S_OK);
    CHECK(clsid == CLSID_SISSProvider);
    const std::wstring key = L"CLSID\\" + windows::ToWide(DefaultOf(L"Vellumo.SISSProvider\\CLSID"));
    CHECK(DefaultOf(L"Vellumo.SISSProvider\\CurVer") == "Vellumo.SISSProvider.1");
    CHECK(DefaultOf(key + L"\\ProgID") == "Vellumo.SISSProvider.1");
    CHECK(DefaultOf(key + L"\\VersionIndependentProgID") == "Vellumo.SISSProvider");
    CHECK(std::filesystem::equivalent(windows::ToWide(DefaultOf(key + L"\\InprocServer32")), LibraryPath()));
    CHECK(DefaultOf(key + L"\\InprocServer32", L"ThreadingModel") == "Apartment");
    windows::RegistryKey programmable;
    CHECK(programmable.Open(HKEY_CLASSES_ROOT, key + L"\\Programmable", KEY_READ) == ERROR_SUCCESS);
    windows::ComPtr<ITypeLib> library;
    CHECK(LoadRegTypeLib(LIBID_Vellumo, 1, 0, LOCALE_NEUTRAL, library.Put()) == S_OK);
    // The host's own interfaces are the host's to register.
    CHECK(DefaultOf(L"Interface\\{306B04C7-F014-48D0-BBD3-DDCA6236BC9E}").empty());
    library.Reset();

    REQUIRE(Regsvr32(L"/u").exitCode == 0);
    const auto after = Classes();
    CHECK(before.size() == after.size());
    CHECK((before == after));
    for (const std::wstring& name : {std::wstring(L"Vellumo"), TextOf(CLSID_SISSProvider), TextOf(LIBID_Vellumo)})
    { // also where an earlier registration had left something
        CAPTURE(windows::FromWide(name.c_str()));
        CHECK(std::ranges::none_of(after,
                                   [&](const std::wstring& path) { return path.find(name) != std::wstring::npos; }));
    }
}

TEST_CASE("a script host creates the provider and asks it")
{
    const RegistrationKept kept;
    REQUIRE(Regsvr32(L"").exitCode == 0);
    const BridgeRegistered bridge;
    const Outcome outcome = Run(ScriptFile(L"personale_studio.vbs"), LibraryPath().parent_path().wstring());
    CHECK(outcome.exitCode == 0);
    CHECK(outcome.output == "IsPersonaleStudio: 0\r\n");
}

TEST_CASE("where the bridge is missing a script host gets an error, an early-bound one the reason, too")
{
    const RegistrationKept kept;
    REQUIRE(Regsvr32(L"").exitCode == 0);
    // Scripts are only told that the object could not be created: their host keeps the description to itself.
    const Outcome outcome = Run(ScriptFile(L"senza_bridge.vbs"), LibraryPath().parent_path().wstring());
    CHECK(outcome.exitCode == 3);
    CHECK(outcome.output.starts_with("429 "));

    windows::ComPtr<ICCEProvider> provider;
    CHECK(CoCreateInstance(CLSID_SISSProvider, nullptr, CLSCTX_INPROC_SERVER, IID_ICCEProvider, provider.PutVoid()) ==
          CO_E_CLASSSTRING);
    const ErrorDetails details = TakeErrorInfo();
    CAPTURE(details.description);
    CHECK(details.description.find("Winbridge4seb.Bean.1") != std::string::npos);
}
