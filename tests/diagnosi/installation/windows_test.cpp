// What only Windows has, broken on purpose: the registered library and bridge, the host's classes, the views of the
// registry. The machine is left as it was.
#include "diagnosi/checks/windows/library_file.h"
#include "host/path.h"
#include "platform/windows/adapters/registry_key.h"
#include "platform/windows/system/text.h"
#include "simulator/norda/windows/com_provider.h"
#include "tests/com/fake_outside.h"
#include "tests/diagnosi/installation/whole_installation.h"

#include <doctest.h>

#include <vellumo.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

using namespace vellumo;
using diagnosi::State;
using tests::Broken;
using tests::WholeInstallation;
namespace fs = std::filesystem;

namespace
{

constexpr bool is64 = sizeof(void*) == 8;
constexpr REGSAM otherView = is64 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
constexpr const char* identity = "Software\\Lisit\\SISS\\ID\\CC_0";

std::wstring ServerKey(const CLSID& clsid)
{
    std::array<wchar_t, 40> text{};
    StringFromGUID2(clsid, text.data(), static_cast<int>(text.size()));
    return L"Software\\Classes\\CLSID\\" + std::wstring(text.data()) + L"\\InprocServer32";
}

// Empty: the key goes.
void SetServer(const CLSID& clsid, const std::optional<std::string>& file, REGSAM view = 0)
{
    windows::RegistryKey key;
    if (!file)
    {
        RegDeleteKeyExW(HKEY_LOCAL_MACHINE, ServerKey(clsid).c_str(), view, 0);
        return;
    }
    REQUIRE(key.Create(HKEY_LOCAL_MACHINE, ServerKey(clsid), KEY_SET_VALUE | view) == ERROR_SUCCESS);
    REQUIRE(key.SetText(nullptr, windows::ToWide(*file)) == ERROR_SUCCESS);
}

// Of the file, from its first occurrence on.
template <class Part>
void Patch(const std::string& path, std::string_view mark, std::size_t behind, Part part)
{
    std::ifstream in(host::NativePath(path), std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(in), {}};
    in.close();
    const auto place = bytes.find(mark);
    REQUIRE(place != std::string::npos);
    std::memcpy(bytes.data() + place + behind, &part, sizeof part);
    std::ofstream(host::NativePath(path), std::ios::binary) << bytes;
}

// The library is registered by the tests' set-up; the rest is this object's.
class WholeMachine final : public WholeInstallation
{
public:
    WholeMachine()
        : dll(diagnosi::LibraryFile(diagnosi::Bitness::This).value())
    {
        SetServer(norda::bridgeClass, dll); // a file of this bitness
        machine->RemoveMachineKey(identity);
        machine->AddMachineKey(identity);
    }
    ~WholeMachine() override
    {
        CoFreeUnusedLibrariesEx(0, 0);
        SetServer(CLSID_SISSProvider, dll);
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Vellumo");
        machine->RemoveMachineKey(identity);
        if (diagnosi::HasOtherBitness())
        {
            SetServer(norda::bridgeClass, std::nullopt, otherView);
        }
    }

    // A copy of the library in a folder of its own, registered in the place of the real one.
    std::string Copy()
    {
        const auto copy = Path("copia\\Vellumo.dll");
        fs::create_directories(host::NativePath(copy).parent_path());
        fs::copy_file(host::NativePath(dll), host::NativePath(copy));
        SetServer(CLSID_SISSProvider, copy);
        return copy;
    }

    std::string dll;
    std::unique_ptr<norda::Installation> machine = norda::MakeRegistryInstallation();
    std::optional<tests::FakeOutside> outside{std::in_place};
};

WholeMachine& MachineOf(WholeInstallation& whole)
{
    return dynamic_cast<WholeMachine&>(whole);
}

// Code for the other kind of processor.
void MakeForeign(const std::string& path)
{
    constexpr std::string_view signature{"PE\0\0", 4};
    Patch(path, signature, signature.size(), WORD{is64 ? IMAGE_FILE_MACHINE_I386 : IMAGE_FILE_MACHINE_AMD64});
}

std::string BridgeFile(WholeMachine& whole)
{
    const auto file = whole.Path("client\\bridge.dll");
    fs::copy_file(host::NativePath(whole.dll), host::NativePath(file));
    SetServer(norda::bridgeClass, file);
    return file;
}

void NameFile(WholeInstallation& whole, const char* text)
{
    MachineOf(whole).Copy();
    whole.Write("copia\\Vellumo.names.txt", text);
}

fs::path VirtualStore(const WholeInstallation& whole)
{
    std::array<wchar_t, MAX_PATH> local{};
    GetEnvironmentVariableW(L"LOCALAPPDATA", local.data(), static_cast<DWORD>(local.size()));
    return fs::path(local.data()) / "VirtualStore" / host::NativePath(whole.Path("host\\SISS").substr(3));
}

const std::vector<Broken> libraries = {
    {"not registered", [](WholeInstallation&) { SetServer(CLSID_SISSProvider, std::nullopt); }, State::Error,
     "Libreria registrata", "Vellumo.dll non è registrata per i programmi a ", "Installare di nuovo Vellumo."},
    {"its file is gone", [](WholeInstallation& whole) { SetServer(CLSID_SISSProvider, whole.Path("Vellumo.dll")); },
     State::Error, "Libreria registrata", "Vellumo.dll, non c'è.", "Installare di nuovo Vellumo."},
    {"its file is no library",
     [](WholeInstallation& whole)
     {
         whole.Write("Vellumo.dll", "scaricata a metà");
         SetServer(CLSID_SISSProvider, whole.Path("Vellumo.dll"));
     },
     State::Error, "Libreria registrata", "è rovinato.", "Installare di nuovo Vellumo."},
    {"its file is of the other bitness", [](WholeInstallation& whole) { MakeForeign(MachineOf(whole).Copy()); },
     State::Error, "Libreria registrata", "non è fatta per i programmi a ", "Installare di nuovo Vellumo."},
    {"an old library beside new templates",
     [](WholeInstallation& whole)
     { Patch(MachineOf(whole).Copy(), "\xBD\x04\xEF\xFE", 8, DWORD{0x00000008}); }, // 0.8 in the fixed information
     State::Error, "Versioni", "copia\\Vellumo.dll: 0.8.", "Riavviare il computer"},
    {"the installer has put a newer version",
     [](WholeInstallation& whole)
     { MachineOf(whole).machine->SetMachineText("Software\\Vellumo", "Versione", "9.9.9.9"); },
     State::Error, "Versioni", "installazione e modelli: 9.9.9.9", "Riavviare il computer"},
    {"a wrong file of names", [](WholeInstallation& whole) { NameFile(whole, "Utils.Esegui = Execute\n"); },
     State::Error, "Nomi usati", "alla riga 1: la libreria non usa Utils.Esegui.", "Correggere il file"},
    {"the provider cannot be made", [](WholeInstallation& whole) { MachineOf(whole).outside.reset(); }, State::Error,
     "Creazione della libreria", "Winbridge4seb.Bean.1", "Rimediare prima"},
};

const std::vector<Broken> outside = {
    {"no bridge", [](WholeInstallation&) { norda::RemoveProgId(L"Winbridge4seb.Bean.1", norda::bridgeClass); },
     State::Error, "Collegamento al SISS", "Winbridge4seb.Bean.1 del client SISS non è registrato per i programmi a ",
     "Installare il client SISS per i programmi a "},
    {"the bridge's file is gone",
     [](WholeInstallation& whole) { SetServer(norda::bridgeClass, whole.Path("client\\bridge.dll")); }, State::Error,
     "Collegamento al SISS", "bridge.dll non c'è.", "registrare di nuovo il suo componente"},
    {"the bridge is of the other bitness", [](WholeInstallation& whole) { MakeForeign(BridgeFile(MachineOf(whole))); },
     State::Error, "Collegamento al SISS", "bridge.dll è per i programmi a ",
     "Installare il client SISS per i programmi a "},
    {"a class of the host is not registered",
     [](WholeInstallation&)
     {
         RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\Norda.Asl"),
             RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Classes\\Norda.Asl");
     },
     State::Attention, "Oggetti del programma", "controllati da qui: Norda.Asl.", "Installare di nuovo il programma"},
    {"a class of the host lacks a member", [](WholeInstallation& whole) { NameFile(whole, "Record.Load = Carica\n"); },
     State::Error, "Oggetti del programma", "L'oggetto Norda.Paziente non ha: Carica.", "Vellumo.names.txt"},
    {"no key CC_0", [](WholeInstallation& whole) { MachineOf(whole).machine->RemoveMachineKey(identity); },
     State::Attention, "Identità", "Manca la chiave HKEY_LOCAL_MACHINE\\Software\\Lisit",
     "Installare di nuovo il client"},
    {"Windows has redirected what was written",
     [](WholeInstallation& whole) { fs::create_directories(VirtualStore(whole)); }, State::Attention,
     "Cartelle reindirizzate", "VirtualStore", "copiarvi il contenuto"},
};

void VerifyOnMachine(const std::vector<Broken>& rows)
{
    for (const auto& row : rows)
    {
        WholeMachine machine;
        tests::Verify(row, machine);
        std::error_code error;
        fs::remove_all(VirtualStore(machine), error);
    }
}

} // namespace

TEST_CASE("a whole installation shows no warning")
{
    WholeMachine machine;
    machine.MakeDatabase();
    CHECK(tests::Complaints(machine.Diagnose()).empty());
}

TEST_CASE("what is wrong with the library is named")
{
    VerifyOnMachine(libraries);
}

TEST_CASE("what is wrong with bridge, host and registry is named")
{
    VerifyOnMachine(outside);
}

TEST_CASE("what only programs of the other bitness have is named as such")
{
    if (!diagnosi::HasOtherBitness())
    {
        return; // nothing of the kind here
    }
    WholeMachine machine;
    SetServer(norda::bridgeClass, std::nullopt);
    windows::RegistryKey key;
    const auto progId = std::wstring(L"Software\\Classes\\Winbridge4seb.Bean.1");
    REQUIRE(key.Open(HKEY_LOCAL_MACHINE, progId, KEY_QUERY_VALUE) == ERROR_SUCCESS); // not redirected
    tests::Verify({"the bridge is there for the others only",
                   [](WholeInstallation& whole) { SetServer(norda::bridgeClass, MachineOf(whole).dll, otherView); },
                   State::Error, "Collegamento al SISS", "; lo è solo per quelli a ", "Installare il client SISS"},
                  machine);
    tests::Verify({"CC_0 is in the other view",
                   [](WholeInstallation& whole)
                   {
                       MachineOf(whole).machine->RemoveMachineKey(identity);
                       windows::RegistryKey other;
                       REQUIRE(other.Create(HKEY_LOCAL_MACHINE, windows::ToWide(identity), KEY_SET_VALUE | otherView) ==
                               ERROR_SUCCESS);
                   },
                   is64 ? State::Ok : State::Attention, "Identità", is64 ? "a 32 bit" : "c'è solo nel registro", ""},
                  machine);
    RegDeleteKeyExW(HKEY_LOCAL_MACHINE, windows::ToWide(identity).c_str(), otherView, 0);
}
