#include "environment/files.h"
#include "host/path.h"
#include "service/service_factory.h"
#include "tests/support/installation.h"

#include <doctest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

using namespace vellumo::service;
using vellumo::host::Date;
using vellumo::tests::Installation;
using vellumo::tests::MemorySettings;

namespace
{

// The templates that are delivered, beside a host program.
class DeliveredTemplates : public Installation
{
public:
    DeliveredTemplates()
    {
        std::filesystem::create_directories(vellumo::host::NativePath(Path("host\\SISS\\Templates")));
        for (const auto& file : std::filesystem::directory_iterator(VELLUMO_TEMPLATES))
        {
            std::filesystem::copy(file.path(), vellumo::host::NativePath(
                                                   Path("host\\SISS\\Templates\\" + file.path().filename().string())));
        }
    }
};

struct Filled
{
    RequestTypes type;
    const char* under;
    const char* names;
};

constexpr const char* administrative = "nuovaPrescrizione/datiAmministrativiPrescrizione/";
constexpr const char* administrativeNames =
    "codiceFiscaleCittadino cognomeCittadino nomeCittadino sessoCittadino dataNascitaCittadino etaCittadino "
    "codiceAslAssistenza siglaProvinciaAssistenza indirizzoDomicilioCittadino civicoDomicilioCittadino "
    "comuneDomicilioCittadino naturaPrescrizione flagFuoriRegione tipoModulo flagSuggerita flagUrgenza campoPriorita "
    "flagRipetibile tipologiaPrescrizione flagOspedaliera flagAltro stampaRicetta";
constexpr const char* sensitive = "nuovaPrescrizione/datiSensibiliPrescrizione/";
constexpr const char* sensitiveNames =
    "flagAltreEsenzioni progrAutocertReddito flagPatologia flagEsenzionePatologia codiceEsenzione";
constexpr const char* item = "nuovaPrescrizione/datiSensibiliPrescrizione/elencoPrestazioni/prestazione/";
constexpr const char* itemNames = "codicePrestazione descrizionePrestazione posologiaPrestazione notaCufPrestazione "
                                  "notaPrestazione quantitaPrestazione";
constexpr const char* personNames =
    "nome cognome dataNascita codiceFiscale sesso idLocalitaNascita tipoRilevazione dataDecesso";
constexpr const char* addressNames = "indirizzo cap comune civico localita";
constexpr const char* residenceNames = "indirizzo CAP idComune comune provincia";

// Every path that an operation of the library fills.
const std::vector<Filled> filled = {
    {rtIdentificaCittadinoEsteso, "profiloCittadino/", "idAssistito nome cognome sesso codiceFiscale dataNascita"},
    {rtIniziaFasePresrittiva, "", "@dataSetVersion"},
    {rtFineFasePrescrittiva, "", "@dataSetVersion"},
    {rtRegistraPrescrizioneFarmaci, "", "@dataSetVersion"},
    {rtRegistraPrescrizioneFarmaci, administrative, administrativeNames},
    {rtRegistraPrescrizioneFarmaci, sensitive, sensitiveNames},
    {rtRegistraPrescrizioneFarmaci, sensitive, "notaPrescrizione"},
    {rtRegistraPrescrizioneFarmaci, item, itemNames},
    {rtRegistraPrescrizioneAccertamenti, "", "@dataSetVersion"},
    {rtRegistraPrescrizioneAccertamenti, administrative, administrativeNames},
    {rtRegistraPrescrizioneAccertamenti, sensitive, sensitiveNames},
    {rtRegistraPrescrizioneAccertamenti, sensitive, "quesitoDiagnostico"},
    {rtRegistraPrescrizioneAccertamenti, item, itemNames},
    {rtInserisciDatiContatto, "contatto/", personNames},
    {rtInserisciDatiContatto, "puntiIndirizzoDomicilio/", addressNames},
    {rtInserisciDatiContatto, "puntiIndirizzoResidenza/", addressNames},
    {rtModificaDatiContatto, "contatto/", personNames},
    {rtModificaDatiContatto, "puntiIndirizzoDomicilio/", addressNames},
    {rtModificaDatiContatto, "puntiIndirizzoResidenza/", addressNames},
    {rtInviaCertificato, "medico/", "nome cognome codiceFiscale codiceASL regione"},
    {rtInviaCertificato, "lavoratore/",
     "codiceFiscale nome cognome sesso dataNascita idComuneNascita comuneNascita provinciaNascita"},
    {rtInviaCertificato, "lavoratore/residenzaAbituale/", residenceNames},
    {rtInviaCertificato, "lavoratore/residenzaReperibilita/", residenceNames},
    {rtInviaCertificato, "certificato/",
     "dataRilascio dataInizio dataFine codiceDiagnosi noteDiagnosi tipoCertificato tipoVisita"},
};

} // namespace

TEST_SUITE("service")
{
    TEST_CASE("every type that SISS offers has its template, with its data and header nodes")
    {
        const DeliveredTemplates installation;
        MemorySettings settings = installation.settings;
        const ServiceFactory factory(settings);
        for (int type = 0; type <= rtInviaCertificato; ++type)
        {
            CAPTURE(type);
            const auto request = factory.GetRequest(static_cast<RequestTypes>(type));
            REQUIRE(request);
            CHECK_FALSE(request->Name().empty());
            CHECK(request->Data());
            CHECK(request->Header().Name().starts_with("m:"));
            CHECK(request->Data().Text().empty());
            CHECK(request->ToString().starts_with("<SOAP-ENV:Envelope"));
        }
        for (const int type : {-1, 12, 13, 14})
        {
            CAPTURE(type);
            CHECK_FALSE(factory.GetRequest(static_cast<RequestTypes>(type)));
        }
    }

    TEST_CASE("every path that an operation fills is in the delivered template")
    {
        const DeliveredTemplates installation;
        MemorySettings settings = installation.settings;
        const ServiceFactory factory(settings);
        for (const auto& row : filled)
        {
            auto request = factory.GetRequest(row.type);
            REQUIRE(request);
            std::istringstream names(row.names);
            for (std::string name; names >> name;)
            {
                const std::string path = row.under + name;
                CAPTURE(path);
                request->SetData(path, "pieno & \"giusto\"");
                CHECK(request->GetData(path) == "pieno & \"giusto\"");
            }
        }
    }

    TEST_CASE("values that the template has no place for are dropped")
    {
        const DeliveredTemplates installation;
        MemorySettings settings = installation.settings;
        auto request = ServiceFactory(settings).GetRequest(rtIdentificaCittadinoEsteso);
        REQUIRE(request);
        const auto before = request->ToString();
        request->SetData("profiloCittadino/altezza", 180);
        request->SetData("@dataSetVersion", "2.0");
        request->SetHeader("altro", "x");
        CHECK(request->ToString() == before);
        request->SetHeader("param/profiloCittadino/dataNascita", *Date::FromCalendar(1968, 7, 1));
        CHECK(request->GetData("profiloCittadino/dataNascita") == "19680701");
    }

    TEST_CASE("a missing template gives no request, a broken one a request without nodes")
    {
        Installation installation;
        const ServiceFactory factory(installation.settings);
        CHECK_FALSE(factory.GetRequest(rtIdentificaCittadinoGUI));
        installation.Write("host\\SISS\\Templates\\identificaCittadinoGUI.template", "<a><b></a>");
        auto request = factory.GetRequest(rtIdentificaCittadinoGUI);
        REQUIRE(request);
        request->SetData("x", "y");
        CHECK_FALSE(request->Data());
        CHECK(request->ToString() == "");
        // A template may say which encoding it has.
        installation.Write("host\\SISS\\Templates\\identificaCittadinoGUI.template",
                           "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>modalit\xE0</a>");
        CHECK(factory.GetRequest(rtIdentificaCittadinoGUI)->ToString().find("modalità") != std::string::npos);
        installation.settings.values.clear();
        CHECK_FALSE(factory.GetRequest(rtIdentificaCittadinoGUI));
    }

    TEST_CASE("the canned reply is for one type only")
    {
        Installation installation;
        const ServiceFactory factory(installation.settings);
        CHECK_FALSE(factory.GetTestResponse(rtIdentificaCittadino));
        installation.Write("host\\SISS\\Tests\\identificaCittadino.test",
                           "<SOAP-ENV:Envelope xmlns:SOAP-ENV=\"urn:s\" xmlns:m=\"urn:u\"><SOAP-ENV:Body>"
                           "<m:ICCE.identificaCittadinoResponse><esitoIdentifica><rispostaSingola>"
                           "<rispostaCittadinoIdentificato><esitoServizio>OK</esitoServizio><datiRisposta>x"
                           "</datiRisposta></rispostaCittadinoIdentificato></rispostaSingola></esitoIdentifica>"
                           "</m:ICCE.identificaCittadinoResponse></SOAP-ENV:Body></SOAP-ENV:Envelope>");
        const auto response = factory.GetTestResponse(rtIdentificaCittadino);
        REQUIRE(response);
        CHECK(response->ServiceResult == "OK");
        CHECK(response->Data.Text() == "x");
        CHECK_FALSE(factory.GetTestResponse(rtIdentificaCittadinoGUI));
    }
}
