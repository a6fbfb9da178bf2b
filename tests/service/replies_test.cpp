#include "host/fault.h"
#include "service/service_factory.h"
#include "service/service_failure.h"
#include "tests/support/installation.h"
#include "tests/ui/fake_desktop.h"

#include <doctest.h>

#include <memory>
#include <string>

using namespace vellumo::service;
using vellumo::tests::MemorySettings;
using vellumo::ui::FakeDesktop;

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

// Wraps `content` in elements, the first of `path` outermost.
std::string Nested(const std::string& path, std::string content)
{
    for (std::size_t end = path.size(); end != std::string::npos && !path.empty();)
    {
        const auto slash = path.rfind('/', end - 1);
        const auto start = slash == std::string::npos ? 0 : slash + 1;
        content = Element(path.substr(start, end - start), content);
        end = slash;
    }
    return content;
}

std::string Detail(const std::string& kind, const std::string& number)
{
    const std::string list = kind == "Warning" ? "listaWarning/warning" : "listaEccezioni/eccezione";
    return Nested(list, Element("codice" + kind, "C" + number) + Element("desc" + kind, "messaggio " + number) +
                            Element("nomeCampo", "campo " + number) + Element("valoreCampo", "valore " + number) +
                            Element("codice" + kind + "Campo", "F" + number) +
                            Element("desc" + kind + "Campo", "campo errato " + number));
}

} // namespace

TEST_SUITE("service")
{
    TEST_CASE("each service's reply is read where that service puts it")
    {
        struct Case
        {
            const char* reply;
            const char* outcome;
            const char* data;
            const char* result;
        };
        const std::string citizen = "rispostaSingola/rispostaCittadinoIdentificato/";
        const std::string citizenData = citizen + "datiRisposta";
        const std::string citizenResult = citizen + "esitoServizio";
        const Case cases[] = {
            {"ICCE.identificaCittadinoGUIResponse", "esitoIdentifica", citizenData.c_str(), citizenResult.c_str()},
            {"ICCE.identificaCittadinoEstesoResponse", "esitoIdentifica", citizenData.c_str(), citizenResult.c_str()},
            {"ICCE.inserisciDatiContattoResponse", "esitoInserisciContatto", "", "esitoServizio"},
            {"ICCE.modificaDatiContattoResponse", "esitoModificaContatto", "", "esitoServizio"},
            {"GSSC.inizioFasePrescrittivaResponse", "param", "datiRisposta", ""},
            {"GSSC.fineFasePrescrittivaResponse", "param", "datiRisposta", ""},
            {"GSSC.registraPrescrizioneResponse", "param", "rispostaRicettaRegistrata/datiRisposta",
             "rispostaRicettaRegistrata/esitoServizio"},
            {"GSSC.annullaPrescrizioneResponse", "param", "rispostaRicettaAnnullata",
             "rispostaRicettaAnnullata/esitoServizio"},
            {"GCM.invioCertificatoMalattiaResponse", "param", "rispostaInvioCertificato", ""},
            {"ALTRO.servizioResponse", "param", "", ""},
        };
        for (const auto& row : cases)
        {
            CAPTURE(row.reply);
            const auto reply =
                Envelope(Element("m:" + std::string(row.reply),
                                 Element(row.outcome, Nested(row.data, "<a>dati</a>") + Nested(row.result, "S"))));
            const auto response = Parse(reply);
            REQUIRE(response);
            CHECK_FALSE(response->Failed());
            CHECK(response->Output == reply);
            CHECK(response->GetData("a") == (*row.data == '\0' ? "" : "dati"));
            CHECK(response->ServiceResult == (*row.result == '\0' ? "" : "S"));
            CHECK_FALSE(Parse(Envelope(Element("m:" + std::string(row.reply), "<altro/>"))));
        }
    }

    TEST_CASE("a text that is no XML is the bridge's own error")
    {
        for (const std::string text : {"", "Connessione rifiutata", "<a>", "<!DOCTYPE a><a/>"})
        {
            CAPTURE(text);
            const auto response = Parse(text);
            REQUIRE(response);
            CHECK(response->Failed());
            CHECK(response->FailedResult->Code == "SEBCONT0001");
            CHECK(response->FailedResult->Message == text);
            CHECK(response->Output == text);
            CHECK_FALSE(response->Data);
        }
    }

    TEST_CASE("well-formed XML that is no reply gives no response")
    {
        for (const std::string& text : {std::string("<html/>"), Envelope(""), Envelope(" <!-- vuoto --> "),
                                        Envelope("<param/>", "soap"), Envelope("solo testo")})
        {
            CAPTURE(text);
            CHECK_FALSE(Parse(text));
        }
    }

    TEST_CASE("a SOAP fault, with either prefix")
    {
        const auto deep =
            Parse(Envelope("<SOAP-ENV:Fault><faultcode>Server</faultcode><faultstring>Guasto</faultstring>"
                           "<detail><faultDetail><errorCode>E1</errorCode></faultDetail></detail>"
                           "</SOAP-ENV:Fault>"));
        REQUIRE(deep);
        CHECK(deep->FailedResult->Code == "E1");
        CHECK(deep->FailedResult->Message == "Guasto");
        const auto plain = Parse(Envelope("<env:Fault><faultcode>Server</faultcode></env:Fault>", "env"));
        REQUIRE(plain);
        CHECK(plain->FailedResult->Code == "Server");
        CHECK(plain->FailedResult->Message == "");
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
        CHECK(response->FailedNode.Name() == "esitoNegativo");
        CHECK(response->FailedResult->Code == "E9");
        CHECK(response->FailedResult->Message == "Rifiutata");
        CHECK(response->FailedResult->Exceptions.Count() == 1);
        CHECK(response->FailedResult->Warnings.Count() == 1);
        REQUIRE(response->Exceptions.Count() == 2);
        CHECK(response->Exceptions.Item(2)->Code == "C3");
        const auto& first = *response->Exceptions.Item(1);
        CHECK(first.Message == "messaggio 1");
        CHECK(first.Field == "campo 1");
        CHECK(first.Value == "valore 1");
        CHECK(first.FieldCode == "F1");
        CHECK(first.FieldMessage == "campo errato 1");
        REQUIRE(response->Warnings.Count() == 1);
        CHECK(response->Warnings.Item(1)->FieldMessage == "campo errato 2");
        CHECK_THROWS_AS(response->Exceptions.Item(0), vellumo::host::Fault);
        CHECK_THROWS_AS(response->Exceptions.Item(3), vellumo::host::Fault);
    }

    TEST_CASE("refusals of single prescriptions do not make the whole reply fail")
    {
        const auto reply = [](const std::string& list)
        {
            return Parse(
                Envelope(Element("m:GSSC.fineFasePrescrittivaResponse",
                                 Element("param", list + Nested("datiRisposta/risultatoRegistrazione/esitoNegativo",
                                                                Detail("Eccezione", "1"))))));
        };
        CHECK_FALSE(reply("<listaEccezioni/>")->Failed());
        CHECK(reply(Detail("Eccezione", "2"))->Failed());
        CHECK_FALSE(reply(Detail("Warning", "2"))->Failed());
    }

    TEST_CASE("the error box shows the failure and its last detail")
    {
        FakeDesktop desktop;
        const vellumo::host::HostServices services; // no Utils: nothing can be recorded, the box appears all the same
        ServiceResponse response;
        response.Exceptions.Add("solo dettaglio", "X", "", "", "", "");
        ReportServiceFailure(response, services, desktop);
        CHECK(desktop.prompts.empty());

        response = {};
        response.FailedResult = std::make_shared<ServiceException>();
        response.FailedResult->Message = "Dati errati";
        response.FailedResult->Code = "E9";
        ReportServiceFailure(response, services, desktop);
        REQUIRE(desktop.prompts.size() == 1);
        CHECK(desktop.prompts[0].text == "Dati errati\r\nIl codice di errore restituito è E9");
        CHECK(desktop.prompts[0].title == "Errore!!");
        CHECK(desktop.prompts[0].icon == vellumo::ui::Icon::Critical);

        response.Exceptions.Add("primo", "C1", "a", "", "F1", "m1");
        response.Exceptions.Add("secondo", "C2", "cap", "", "F2", "non valido");
        ReportServiceFailure(response, services, desktop);
        REQUIRE(desktop.prompts.size() == 2);
        CHECK(desktop.prompts[1].text == "Dati errati\r\nIl codice di errore restituito è E9\r\n\r\nDETTAGLI\r\n"
                                         "secondo ( err : C2 )\r\nCampo cap : non valido ( err : F2 )");

        // A page of a broken proxy, say: the code behind it is still seen.
        response.FailedResult->Message.assign(5'000'000, 'x');
        ReportServiceFailure(response, services, desktop);
        CHECK(desktop.prompts.at(2).text.size() < 2000);
        CHECK(desktop.prompts.at(2).text.find("…\r\nIl codice di errore restituito è E9") != std::string::npos);
    }
}
