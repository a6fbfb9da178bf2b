#include "host/fault.h"
#include "host/text.h"
#include "service/service_factory.h"
#include "service/service_failure.h"
#include "tests/support/practice.h"

#include <doctest.h>

#include <memory>
#include <string>

using namespace vellumo::service;
using vellumo::tests::FakeDesktop;
using vellumo::tests::MemorySettings;
using vellumo::tests::Practice;

namespace
{

std::shared_ptr<ServiceResponse> Parse(const std::string& text)
{
    MemorySettings settings;
    return ServiceFactory(settings).GetResponse(text);
}

std::string Envelope(const std::string& body, const std::string& prefix = "SOAP-ENV")
{
    return "<?xml version=\"1.0\"?><" + prefix + ":Envelope xmlns:" + prefix +
           "=\"http://schemas.xmlsoap.org/soap/envelope/\" xmlns:m=\"urn:x\"><" + prefix + ":Body>" + body + "</" +
           prefix + ":Body></" + prefix + ":Envelope>";
}

std::string Element(const std::string& name, const std::string& content)
{
    return "<" + name + ">" + content + "</" + name + ">";
}

std::string Detail(const std::string& kind, const std::string& number)
{
    const std::string list = kind == "Warning" ? "<listaWarning><warning>" : "<listaEccezioni><eccezione>";
    const std::string end = kind == "Warning" ? "</warning></listaWarning>" : "</eccezione></listaEccezioni>";
    return list + Element("codice" + kind, "C" + number) + Element("desc" + kind + "Campo", "campo " + number) + end;
}

} // namespace

TEST_SUITE("service")
{
    TEST_CASE("well-formed XML that is no reply gives no response")
    {
        for (const std::string& text : {std::string("<html/>"), Envelope(""), Envelope(" <!-- vuoto --> "),
                                        Envelope("<param/>", "soap"), Envelope("solo testo")})
        {
            CAPTURE(text);
            CHECK_FALSE(Parse(text));
        }
    }

    TEST_CASE("a refusal carries its code and its details once")
    {
        const auto response = Parse(Envelope(
            Element("m:GSSC.annullaPrescrizioneResponse",
                    Element("param", Element("esitoNegativo",
                                             "<codiceErrore>E9</codiceErrore><descErrore>Rifiutata</descErrore>" +
                                                 Detail("Eccezione", "1") + Detail("Warning", "2")) +
                                         Element("rispostaRicettaAnnullata", Detail("Eccezione", "3"))))));
        REQUIRE(response);
        REQUIRE(response->FailedResult);
        CHECK(response->FailedResult->Code == "E9");
        CHECK(response->FailedResult->Exceptions.Count() == 1);
        CHECK(response->FailedResult->Warnings.Count() == 1);
        REQUIRE(response->Exceptions.Count() == 2);
        CHECK(response->Exceptions.Item(1)->Code == "C1");
        CHECK(response->Exceptions.Item(2)->Code == "C3");
        REQUIRE(response->Warnings.Count() == 1);
        CHECK(response->Warnings.Item(1)->FieldMessage == "campo 2");
        CHECK_THROWS_AS(response->Exceptions.Item(0), vellumo::host::Fault);
        CHECK_THROWS_AS(response->Exceptions.Item(3), vellumo::host::Fault);
    }

    TEST_CASE("the code behind a message of megabytes, the page of a broken proxy, say, is still seen")
    {
        Practice practice;
        practice.services.utils = nullptr; // nothing can be recorded, the box appears all the same
        FakeDesktop& desktop = practice.desktop;
        ServiceResponse response;
        response.Exceptions.Add("solo dettaglio", "X", "", "", "", "");
        ReportServiceFailure(response, practice.journal, desktop);
        CHECK(desktop.prompts.empty()); // a detail alone is no failure

        response.FailedResult = std::make_shared<ServiceException>();
        response.FailedResult->Message.assign(5'000'000, 'x');
        response.FailedResult->Code = "E9";
        ReportServiceFailure(response, practice.journal, desktop);
        REQUIRE(desktop.prompts.size() == 1);
        CHECK(vellumo::host::CharacterCount(desktop.prompts[0].text) == 2000);
        CHECK(desktop.prompts[0].text.find("…\r\nIl codice di errore restituito è E9\r\n\r\nDETTAGLI") !=
              std::string::npos);
    }
}
