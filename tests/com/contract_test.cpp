// What the library needs of its host: the document says what the table says, and a file of other names is read with
// care.
#include "host/fault.h"
#include "platform/windows/adapters/host_contract.h"
#include "platform/windows/adapters/host_name_map.h"
#include "platform/windows/system/text.h"
#include "simulator/norda/windows/renamed_library.h"
#include "tests/com/fake_outside.h"
#include "tests/com/library.h"

#include <doctest.h>

#include <fstream>
#include <iterator>

using namespace vellumo;
using windows::HostNameMap;
namespace fs = std::filesystem;
namespace names = windows::names;

namespace
{

std::string FaultOf(std::string_view text)
{
    try
    {
        static_cast<void>(HostNameMap::Parse(text, "Vellumo.names.txt"));
    }
    catch (const host::Fault& fault)
    {
        return fault.Description();
    }
    return {};
}

} // namespace

TEST_CASE("the document has every class and member that the library needs, and no other")
{
    std::string rows;
    for (const auto& need : windows::HostContract())
    {
        rows += "| `" + windows::FromWide(windows::KeyOf(need.name)) + "` | " + need.how + " | " + need.arguments +
                " | " + need.answer + " | " + need.fault + " |\n";
    }
    std::ifstream in(fs::path(VELLUMO_DOCUMENTS) / "host-contract.md", std::ios::binary);
    const std::string document{std::istreambuf_iterator<char>(in), {}};
    const auto begin = document.find("\n| `" + windows::FromWide(names::bridgeProgId.text)) + 1;
    CHECK(document.substr(begin, document.find("\n\n", begin) + 1 - begin) == rows);
}

TEST_CASE("a file says what a host calls its objects")
{
    const auto map = HostNameMap::Parse("\xEF\xBB\xBF# of this host\r\n"
                                        "lockSrv.IDUTENTE = UserID\r\n"
                                        "\r\n"
                                        "  Norda.Paziente=Cartella.Paziente.2",
                                        "Vellumo.names.txt");
    CHECK(std::wstring(map.Of(names::lockSrv::userId)) == L"UserID");
    CHECK(std::wstring(map.Of(names::patientProgId)) == L"Cartella.Paziente.2");
    CHECK(std::wstring(map.Of(names::settings::load)) == L"Load");
    CHECK(std::wstring(HostNameMap::ReadFrom(L"C:\\nowhere").Of(names::record::field)) == L"Field");
}

TEST_CASE("a file of names with a mistake is refused, and says where")
{
    CHECK(FaultOf("# one\nUtils.Execut = Esegui\n").find("alla riga 2: la libreria non usa Utils.Execut.") !=
          std::string::npos);
    CHECK(FaultOf("Utils.Execute Esegui").find("alla riga 1: manca il segno =.") != std::string::npos);
    CHECK(FaultOf("Utils.Execute = a\nUTILS.execute = b").find("alla riga 2: UTILS.execute c'è già.") !=
          std::string::npos);
    for (const auto* const wrong :
         {"Utils.Execute =", "Utils.Execute = 1a", "Utils.Execute = a b", "Utils.Execute = a.b"})
    {
        CHECK(FaultOf(wrong).find("non è un nome") != std::string::npos);
    }
}

TEST_CASE("beside a wrong file of names no provider is made")
{
    const tests::FakeOutside outside;
    const auto folder = fs::temp_directory_path() / "vellumo-nomi";
    fs::remove_all(folder);
    fs::create_directories(folder);
    fs::copy_file(tests::LibraryPath(), folder / "Vellumo.dll");
    std::ofstream(folder / "Vellumo.names.txt") << "Session.SenzaSISS = Altro\n";
    {
        const norda::RenamedLibrary library(folder);
        windows::ComPtr<ICCEProvider> provider;
        CHECK(FAILED(library.Create(CLSID_SISSProvider, IID_ICCEProvider, provider.PutVoid())));
        CHECK(tests::TakeErrorInfo().description.find("la libreria non usa Session.SenzaSISS.") != std::string::npos);
    }
    fs::remove_all(folder);
}
