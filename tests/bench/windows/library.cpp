// The library itself, reached as a host reaches it, against bare programs doing the same work.
#include "environment/files.h"
#include "tests/bench/measure.h"
#include "tests/bench/windows/bare_server.h"
#include "tests/bench/windows/bare_window.h"
#include "tests/bench/windows/bare_work.h"
#include "tests/bench/windows/library_run.h"
#include "tests/bench/windows/subjects.h"

#include "platform/windows/adapters/host_fault.h"

namespace vellumo::bench
{
namespace
{

// SISS refuses with a code after which nobody is asked anything.
constexpr const char* refusal =
    R"(<?xml version="1.0" encoding="UTF-8"?><SOAP-ENV:Envelope )"
    R"(xmlns:SOAP-ENV="http://schemas.xmlsoap.org/soap/envelope/" xmlns:m="urn:siss:ICCE"><SOAP-ENV:Body>)"
    "<m:ICCE.identificaCittadinoGUIResponse><esitoIdentifica><esitoNegativo><codiceErrore>APPL000103</codiceErrore>"
    "<descErrore>Operazione annullata</descErrore></esitoNegativo></esitoIdentifica>"
    "</m:ICCE.identificaCittadinoGUIResponse></SOAP-ENV:Body></SOAP-ENV:Envelope>";

// The bare server, registered as long as this lives.
class BareServer
{
public:
    BareServer()
    {
        std::wstring program(MAX_PATH, L'\0');
        program.resize(GetModuleFileNameW(nullptr, program.data(), MAX_PATH));
        const auto file = program.substr(0, program.rfind(L'\\') + 1) + L"bare_server.dll";
        const auto key = Key() + L"\\InprocServer32";
        RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), nullptr, REG_SZ, file.c_str(),
                        static_cast<DWORD>((file.size() + 1) * sizeof(wchar_t)));
        RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), L"ThreadingModel", REG_SZ, L"Apartment", sizeof L"Apartment");
    }
    ~BareServer() { RegDeleteTreeW(HKEY_LOCAL_MACHINE, Key().c_str()); }
    BareServer(const BareServer&) = delete;
    BareServer& operator=(const BareServer&) = delete;

    static void CreateAndRelease()
    {
        windows::ComPtr<IUnknown> object;
        windows::ThrowIfFailed(
            CoCreateInstance(bareClass, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object.PutVoid()), "bare server");
    }

private:
    static std::wstring Key()
    {
        wchar_t spelled[64] = {};
        StringFromGUID2(bareClass, spelled, 64);
        return std::wstring(L"Software\\Classes\\CLSID\\") + spelled;
    }
};

void Repeat(int times, const std::function<void()>& work)
{
    for (int i = 0; i < times; ++i)
    {
        work();
    }
}

bool MeasureCreation(LibraryRun& run)
{
    const BareServer server;
    constexpr int times = 50;
    return Report(Compare(
                      "fifty providers created and released", "a bare COM server that reads and creates the same", 15,
                      [&] { Repeat(times, [&] { run.CreateAndRelease(); }); },
                      [&] { Repeat(times, [] { BareServer::CreateAndRelease(); }); }),
                  mostTimes);
}

void Identify(LibraryRun& run)
{
    bool gestito = false;
    static_cast<void>(run.Provider().IdentificaPaziente({}, gestito));
}

// The library's window as it stands, and the calls that the work makes.
struct Copied
{
    std::unique_ptr<BareWindow> window;
    RecordedCalls calls;
};

bool MeasureCall(LibraryRun& run)
{
    Copied copied;
    run.TheBridge().called = [&] { copied.window = std::make_unique<BareWindow>(LibraryRun::Window()); };
    copied.calls.Record(run.Roots(), [&] { Identify(run); });
    run.TheBridge().called = nullptr;
    const auto file = (run.Practice().TemplatesFolder() / "identificaCittadinoGUI.template").string();
    constexpr int times = 5;
    return Report(Compare(
                      "five calls to SISS with their wait windows", "bare windows, the same calls, XML read by MSXML",
                      31, [&] { Repeat(times, [&] { Identify(run); }); },
                      [&]
                      {
                          Repeat(times,
                                 [&]
                                 {
                                     ReadXml(environment::ReadFile(file).value());
                                     copied.window->ShowModal([&](HWND) { copied.calls.Replay(run.Roots()); });
                                     ReadXml(refusal);
                                 });
                      }),
                  mostTimes);
}

} // namespace

bool MeasureLibrary(const std::filesystem::path& folder, const Wanted& isWanted)
{
    LibraryRun run(folder / "practice");
    run.TheBridge().reply = refusal;
    bool good = true;
    good = (!isWanted("creation") || MeasureCreation(run)) && good;
    good = (!isWanted("call") || MeasureCall(run)) && good;
    good = (!isWanted("list") || MeasureList(run, folder)) && good;
    good = (!isWanted("table") || MeasureTable(run)) && good;
    return (!isWanted("memory") || MeasureMemory(run)) && good;
}

} // namespace vellumo::bench
