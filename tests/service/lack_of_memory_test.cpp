// A lack of memory is told as what it is: neither the operator nor SISS may take it for something else.
#include "host/fault.h"
#include "service/service_sender.h"
#include "tests/support/fake_host.h"
#include "tests/support/installation.h"
#include "tests/support/scarce_memory.h"
#include "tests/support/travelling_desktop.h"

#include <doctest.h>

#include <memory>
#include <new>

using namespace vellumo;
using service::ServiceFactory;

namespace
{

constexpr const char* templateFile = "host\\SISS\\Templates\\identificaCittadinoGUI.template";
constexpr const char* reply =
    "<SOAP-ENV:Envelope xmlns:SOAP-ENV=\"urn:s\" "
    "xmlns:m=\"urn:u\"><SOAP-ENV:Body><m:ICCE.identificaCittadinoGUIResponse>"
    "<esitoIdentifica><rispostaSingola><rispostaCittadinoIdentificato><esitoServizio>OK</esitoServizio>"
    "</rispostaCittadinoIdentificato></rispostaSingola></esitoIdentifica></m:ICCE.identificaCittadinoGUIResponse>"
    "</SOAP-ENV:Body></SOAP-ENV:Envelope>";

class NoObjects final : public host::HostObjects
{
public:
    std::unique_ptr<host::Record> CreateRecord(host::RecordKind, const host::HostServices&) override { return nullptr; }
    std::unique_ptr<host::PracticeSettings> CreateSettings(const host::HostServices&) override
    {
        throw host::Fault("Lo studio non ha impostazioni.");
    }
};

// Finds no memory for the reply that came.
class NarrowBridge final : public host::Bridge
{
public:
    std::string CallSebMethod(const std::string&) override { throw std::bad_alloc(); }
};

struct Outside
{
    tests::Installation installation;
    host::HostServices services;
    NoObjects objects;
    service::ExchangeLog log{services, objects, installation.settings, installation.clock};
    ServiceFactory factory{installation.settings};
    tests::TravellingDesktop desktop;
};

} // namespace

TEST_SUITE("service")
{
    TEST_CASE("a request is whole, or there is none")
    {
        const Outside outside;
        outside.installation.Write(templateFile, "<a><b>testo</b></a>");
        std::optional<service::ServiceRequest> request;
        const auto failures = tests::WithMemoryRunningOut(
            [&]
            {
                request.reset();
                host::PassOver([&] { request = outside.factory.GetRequest(service::rtIdentificaCittadinoGUI); });
            },
            [&] { CHECK((!request || request->ToString() == "<a><b>testo</b></a>")); });
        CHECK(request);
        CHECK(failures > 10);
    }

    TEST_CASE("a reply for which memory runs out is none")
    {
        Outside outside;
        const service::ServiceRequest request("Prova", "/a", "/a", xml::Document::FromText("<a/>").value());
        std::shared_ptr<service::ServiceResponse> response;
        SUBCASE("while it is read")
        {
            tests::FakeBridge bridge;
            bridge.reply = reply;
            service::ServiceSender sender(bridge, outside.factory, outside.log, outside.desktop);
            const auto failures =
                tests::WithMemoryRunningOut([&] { response = sender.SendServiceRequest(request); },
                                            [&] { CHECK((!response || response->ServiceResult == "OK")); });
            REQUIRE(response);
            CHECK(response->ServiceResult == "OK");
            CHECK(failures > 10);
        }
        SUBCASE("on its way through the bridge")
        {
            NarrowBridge bridge;
            service::ServiceSender sender(bridge, outside.factory, outside.log, outside.desktop);
            CHECK_FALSE(sender.SendServiceRequest(request));
        }
    }
}
