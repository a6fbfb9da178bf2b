// A lack of memory is told as what it is: neither the operator nor SISS may take it for something else.
#include "host/fault.h"
#include "tests/support/practice.h"
#include "tests/support/scarce_memory.h"

#include <doctest.h>

#include <memory>
#include <new>
#include <optional>

using namespace vellumo;
using tests::WithMemoryRunningOut;

namespace
{

constexpr auto type = service::rtIdentificaCittadinoGUI;
constexpr const char* reply =
    "<SOAP-ENV:Envelope xmlns:SOAP-ENV='urn:s' xmlns:m='urn:u'><SOAP-ENV:Body><m:ICCE.identificaCittadinoGUIResponse>"
    "<esitoIdentifica><rispostaSingola><rispostaCittadinoIdentificato><esitoServizio>OK</esitoServizio>"
    "</rispostaCittadinoIdentificato></rispostaSingola></esitoIdentifica></m:ICCE.identificaCittadinoGUIResponse>"
    "</SOAP-ENV:Body></SOAP-ENV:Envelope>";

// Finds no memory for the reply that came.
class NarrowBridge final : public host::Bridge
{
public:
    std::string CallSebMethod(const std::string&) override { throw std::bad_alloc(); }
};

} // namespace

TEST_SUITE("service")
{
    TEST_CASE("a request is whole, or there is none")
    {
        const tests::Practice practice;
        const std::string whole = practice.factory.GetRequest(type).value().ToString();
        std::optional<service::ServiceRequest> request;
        const auto failures = WithMemoryRunningOut(
            [&]
            {
                request.reset();
                host::PassOver([&] { request = practice.factory.GetRequest(type); });
            },
            [&] { CHECK((!request || request->ToString() == whole)); });
        CHECK(request);
        CHECK(failures > 10);
    }

    TEST_CASE("a reply for which memory runs out is none")
    {
        tests::Practice practice;
        const auto request = practice.factory.GetRequest(type).value();
        SUBCASE("while it is read")
        {
            practice.bridge.reply = reply;
            std::shared_ptr<service::ServiceResponse> response;
            const auto failures = WithMemoryRunningOut([&] { response = practice.sender.SendServiceRequest(request); },
                                                       [&] { CHECK((!response || response->ServiceResult == "OK")); });
            REQUIRE(response);
            CHECK(response->ServiceResult == "OK");
            CHECK(failures > 10);
        }
        SUBCASE("on its way through the bridge")
        {
            NarrowBridge bridge;
            service::ServiceSender sender(bridge, practice.factory, practice.log, practice.desktop, practice.journal);
            CHECK_FALSE(sender.SendServiceRequest(request));
        }
    }
}
