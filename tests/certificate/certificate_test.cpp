// Requests compared whole, and what the operations would do if SISS offered the services that it lacks today.
#include "certificate/certificates.h"
#include "certificate/contacts.h"
#include "tests/support/fake_host.h"
#include "tests/support/golden.h"
#include "tests/support/travelling_desktop.h"

#include <doctest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

using namespace vellumo;
using namespace vellumo::tests;

namespace
{

class TwoRecords final : public host::HostObjects
{
public:
    std::unique_ptr<host::Record> CreateRecord(host::RecordKind kind, const host::HostServices&) override
    {
        return std::make_unique<MemoryRecord>(kind == host::RecordKind::Patient ? patient : doctor);
    }
    std::unique_ptr<host::PracticeSettings> CreateSettings(const host::HostServices&) override
    {
        throw host::Fault("Nessuna impostazione.");
    }

    StoredRow patient = {.columns = {{"Nome", "Niccolò"},
                                     {"Cognome", "Dell'Acqua"},
                                     {"CodiceFiscale", "DLLNCL69S02B639C"},
                                     {"Sesso", "M"},
                                     {"DataNascita", *host::Date::FromCalendar(1969, 11, 2)},
                                     {"IDComuneNascita", 28}}};
    StoredRow doctor = {.columns = {{"Nome", "Laura"}, {"Cognome", "D'Amico"}, {"CodiceFiscale", "DMCLRA65B50F205I"}}};
};

// Also gives a request for rectifying and cancelling.
class CompleteFactory final : public service::ServiceFactory
{
public:
    using ServiceFactory::ServiceFactory;

    [[nodiscard]] std::optional<service::ServiceRequest> GetRequest(service::RequestTypes type) const override
    {
        if (type != service::rtRettificaCertificato && type != service::rtAnnullaCertificato)
        {
            return ServiceFactory::GetRequest(type);
        }
        const std::string operation = "/SOAP-ENV:Envelope/SOAP-ENV:Body/m:GCM.prova";
        return service::ServiceRequest(
            "Prova", operation + "/param", operation,
            *xml::Document::FromText(
                R"(<SOAP-ENV:Envelope xmlns:SOAP-ENV="http://schemas.xmlsoap.org/soap/envelope/" xmlns:m="urn:siss:GCM">
                <SOAP-ENV:Body><m:GCM.prova><param>
                <medico><nome/><cognome/><codiceFiscale/><codiceASL/><regione/></medico>
                <lavoratore><codiceFiscale/><cognome/></lavoratore>
                <certificato><dataInizio/><dataFine/><protocolloDaRettificare/><protocolloDaCancellare/></certificato>
                </param></m:GCM.prova></SOAP-ENV:Body></SOAP-ENV:Envelope>)"));
    }
};

std::string Receipt(const std::string& protocol, const std::string& date)
{
    return R"(<SOAP-ENV:Envelope xmlns:SOAP-ENV="e" xmlns:m="m"><SOAP-ENV:Body><m:GCM.invioCertificatoMalattiaResponse>)"
           "<param><rispostaInvioCertificato><datiINPS><protocolloINPS>" +
           protocol + "</protocolloINPS><dataRicezione>" + date +
           "</dataRicezione></datiINPS></rispostaInvioCertificato></param>"
           "</m:GCM.invioCertificatoMalattiaResponse></SOAP-ENV:Body></SOAP-ENV:Envelope>";
}

// A practice in memory with one certificate of one patient.
struct Practice
{
    Practice()
    {
        InstallTemplates(installation);
        utils->valueOf = [](const std::string& sql, const host::Parameters& parameters) -> host::Value
        {
            const bool cantu = parameters.at(0) == host::Value(28);
            CHECK((cantu || parameters.at(0) == host::Value(107)));
            return sql.starts_with("SELECT CodiceISTAT") ? (cantu ? "013041" : "015146")
                   : sql.starts_with("SELECT Comune")    ? (cantu ? "Cantù" : "Milano")
                                                         : (cantu ? "CO" : "MI");
        };
        services.utils = utils;
    }

    // The address that the last parameter asks for, as Utils hands both over.
    void LivesAt(const std::vector<Columns>& domicile, const std::vector<Columns>& residence) const
    {
        utils->rowsOf = [=, asked = 0](const std::string& sql) mutable -> std::vector<Columns>
        {
            CHECK(sql.starts_with("SELECT Residenza.Indirizzo, Norda..Comune.Cap"));
            return ++asked % 2 == 1 ? domicile : residence; // the domicile is looked up first
        };
    }

    Installation installation;
    FakeBridge bridge;
    TravellingDesktop desktop;
    TwoRecords objects;
    std::shared_ptr<FakeUtils> utils = std::make_shared<FakeUtils>();
    host::HostServices services;
    CompleteFactory factory{installation.settings};
    environment::SISSEnvironment environment{installation.settings, installation.clock};
    service::ExchangeLog log{services, objects, installation.settings, installation.clock};
    service::ServiceSender sender{bridge, factory, log, desktop};
    NoPrescriptions prescriptions;
    service::ProviderContext context = {
        services, objects, prescriptions, installation.settings, installation.clock, desktop, environment, factory,
        sender,   log};

    StoredRow stored = {.columns = {{"IDSpecialista", 1},
                                    {"IDPaziente", 7},
                                    {"NumeroASL", "308"},
                                    {"CodiceRegione", "030"},
                                    {"IndirizzoDomicilio", "Via del Domicilio, 1"},
                                    {"CapDomicilio", "20100"},
                                    {"IDComuneDomicilio", 107},
                                    {"ComuneDomicilio", "MILANO come scritto"},
                                    {"ProvinciaDomicilio", "XX"},
                                    {"IndirizzoResidenza", "Via della Residenza, 2"},
                                    {"CapResidenza", "22060"},
                                    {"IDComuneResidenza", 28},
                                    {"ComuneResidenza", "CANTÙ come scritta"},
                                    {"ProvinciaResidenza", "YY"},
                                    {"DataCertificato", *host::Date::FromCalendar(2024, 3, 5, 9, 30)},
                                    {"DataInizio", *host::Date::FromCalendar(2024, 3, 4)},
                                    {"DataScadenza", *host::Date::FromCalendar(2024, 3, 9)},
                                    {"CodicePatologia", "466.0"},
                                    {"Annotazioni", "Bronchite <acuta> & febbre"},
                                    {"IDTipoCertificato", 2},
                                    {"IDCategoriaVisita", 6}}};
    MemoryRecord certificate{stored};
};

const Columns domicile = {
    {"Indirizzo", "Via Como 6/B int. 4/bis"}, {"Cap", "22063"}, {"CodiceISTAT", "013041"}, {"Comune", "Cantù"}};
const Columns residence = {
    {"Indirizzo", "Viale Monza, 140"}, {"Cap", "20125"}, {"CodiceISTAT", "015146"}, {"Comune", "Milano"}};

} // namespace

TEST_SUITE("certificate")
{
    TEST_CASE("whole certificates")
    {
        Practice practice;
        practice.bridge.reply = Receipt("350000007", "20240305103000");
        CHECK_FALSE(certificate::Certificates(practice.context).Send(&practice.certificate));
        practice.stored.columns.insert_or_assign("NumeroProtocollo", host::Value());
        for (const char* town : {"IDComuneDomicilio", "IDComuneResidenza"})
        {
            practice.stored.columns.insert_or_assign(town, 0);
        }
        practice.stored.columns.insert_or_assign("IDTipoCertificato", "x");
        practice.stored.columns.insert_or_assign("IDCategoriaVisita", 2);
        practice.stored.columns.insert_or_assign("DataInizio", host::Value());
        CHECK_FALSE(certificate::Certificates(practice.context).Send(&practice.certificate));
        REQUIRE(practice.bridge.requests.size() == 2);
        CHECK(practice.bridge.requests[0] == Golden("certificate", "certificato"));
        CHECK(practice.bridge.requests[1] == Golden("certificate", "certificato-senza-residenze"));
    }

    TEST_CASE("a window that fails when INPS has answered does not take the number with it")
    {
        Practice practice;
        practice.desktop.failsAfterwards = true;
        practice.bridge.reply = Receipt("350000007", "20240305103000");
        CHECK_FALSE(certificate::Certificates(practice.context).Send(&practice.certificate));
        CHECK(practice.stored.columns.at("NumeroProtocollo") == host::Value("350000007"));
        CHECK(practice.stored.saved == 1);
    }

    TEST_CASE("a rectification carries the last day and the number on, again and again")
    {
        Practice practice;
        auto& columns = practice.stored.columns;
        columns.insert_or_assign("NumeroProtocollo", "350000007");
        for (const char* protocol : {"350000008", "350000009"})
        {
            const auto before = columns.at("NumeroProtocollo");
            practice.bridge.reply = Receipt(protocol, "2024-03-06T08:00:00");
            practice.desktop.told.clear();
            CHECK_FALSE(certificate::Certificates(practice.context).Send(&practice.certificate));
            CHECK(columns.at("NumeroProtocollo") == host::Value(protocol));
            CHECK(columns.at("NumeroProtocolloOrigine") == before);
            CHECK(columns.at("DataRicezione") == host::Value(*host::Date::FromCalendar(2024, 3, 6, 8)));
            CHECK(practice.desktop.told == "Informazione: Certificato rettificato con successo.\n");
        }
        CHECK(practice.stored.saved == 2);
        CHECK(practice.bridge.requests.at(0) == Golden("certificate", "rettifica"));
    }

    TEST_CASE("a cancellation keeps the number and stores its own")
    {
        Practice practice;
        auto& columns = practice.stored.columns;
        columns.insert_or_assign("NumeroProtocollo", "350000007");
        practice.bridge.reply = Receipt("350000010", "quando?");
        CHECK_FALSE(certificate::Certificates(practice.context).Cancel(&practice.certificate));
        CHECK(practice.bridge.requests.at(0) == Golden("certificate", "annullamento"));
        CHECK(columns.at("NumeroProtocollo") == host::Value("350000007"));
        CHECK(columns.at("NumeroProtocolloAnnullamento") == host::Value("350000010"));
        CHECK(columns.at("DataRicezione").IsNull());
        CHECK_FALSE(columns.contains("NumeroProtocolloOrigine"));
        CHECK(practice.stored.saved == 1);
        CHECK(practice.desktop.told == "Informazione: Certificato annullato con successo.\n");

        // A certificate that was never sent goes out all the same, with its empty number.
        columns.insert_or_assign("NumeroProtocollo", host::Value());
        CHECK_FALSE(certificate::Certificates(practice.context).Cancel(&practice.certificate));
        const auto sent = xml::Document::FromText(practice.bridge.requests.at(1));
        CHECK(sent->Root().Descendants("protocolloDaCancellare").at(0).Text().empty());
    }

    TEST_CASE("what fails leaves the certificate alone and says so in the operation's own words")
    {
        struct Failure
        {
            bool cancels;
            std::string reply;
            const char* told;
        };
        const std::string refusal =
            R"(<SOAP-ENV:Envelope xmlns:SOAP-ENV="e" xmlns:m="m"><SOAP-ENV:Body><m:GCM.altroResponse><param>)"
            "<esitoNegativo><codiceErrore>G1</codiceErrore><descErrore>No.</descErrore></esitoNegativo>"
            "</param></m:GCM.altroResponse></SOAP-ENV:Body></SOAP-ENV:Envelope>";
        const std::string refused = "Errore!!: No.\r\nIl codice di errore restituito è G1\n";
        const char* notSent = "Errore!!: Si è verificato un errore in fase di invio del certificato.\n";
        const char* notCancelled = "Errore!!: Si è verificato un errore in fase di annullamento del certificato.\n";
        const Failure failures[] = {
            {false, "<altro/>", notSent},           {false, Receipt("", "20240305"), notSent},
            {false, refusal, refused.c_str()},      {true, "<altro/>", notCancelled},
            {true, Receipt(" ", ""), notCancelled}, {true, refusal, refused.c_str()},
        };
        for (const auto& failure : failures)
        {
            CAPTURE(failure.reply);
            Practice practice;
            practice.stored.columns.insert_or_assign("NumeroProtocollo", "350000007");
            const auto before = practice.stored.columns;
            practice.bridge.reply = failure.reply;
            const certificate::Certificates certificates(practice.context);
            const bool answer =
                failure.cancels ? certificates.Cancel(&practice.certificate) : certificates.Send(&practice.certificate);
            CHECK_FALSE(answer);
            CHECK(practice.bridge.requests.size() == 1);
            CHECK(practice.desktop.told == failure.told);
            CHECK(practice.stored.columns == before);
            CHECK(practice.stored.saved == 0);
        }
    }

    TEST_CASE("a date that is text and cannot be read does not go out as none")
    {
        for (const auto& [date, sent] : {std::pair(host::Value("fine mese"), ""),
                                         {host::Value("9/3/2024"), ""},
                                         {host::Value(45360.75), "20240309"},
                                         {host::Value("2024-03-09"), "20240309"}})
        {
            CAPTURE(date.ToText());
            Practice practice;
            practice.stored.columns.insert_or_assign("DataScadenza", date);
            practice.bridge.reply = Receipt("350000007", "");
            CHECK_FALSE(certificate::Certificates(practice.context).Send(&practice.certificate));
            REQUIRE(practice.bridge.requests.size() == (*sent == 0 ? 0 : 1));
            CHECK((*sent == 0 ||
                   practice.bridge.requests[0].find(std::string("<dataFine>") + sent) != std::string::npos));
        }
    }

    TEST_CASE("whole contacts")
    {
        Practice practice;
        const certificate::Contacts contacts(practice.context);
        practice.LivesAt({domicile}, {residence});
        practice.bridge.reply =
            R"(<SOAP-ENV:Envelope xmlns:SOAP-ENV="e" xmlns:m="m"><SOAP-ENV:Body><m:ICCE.inserisciDatiContattoResponse>)"
            "<esitoInserisciContatto><esitoServizio>N</esitoServizio></esitoInserisciContatto>"
            "</m:ICCE.inserisciDatiContattoResponse></SOAP-ENV:Body></SOAP-ENV:Envelope>";
        CHECK_FALSE(contacts.Insert(7));
        REQUIRE(practice.bridge.requests.size() == 2);
        CHECK(practice.bridge.requests[0] == Golden("certificate", "contatto"));
        CHECK(practice.bridge.requests[1] == Golden("certificate", "contatto-modifica"));

        practice.bridge.reply.clear();
        practice.LivesAt({}, {});
        CHECK_FALSE(contacts.Insert(7));
        CHECK(practice.bridge.requests.at(2) == Golden("certificate", "contatto-senza-indirizzi"));

        practice.LivesAt({}, {residence});
        practice.objects.patient.columns.insert_or_assign("Deceduto", true);
        practice.objects.patient.columns.insert_or_assign("DataRevoca", *host::Date::FromCalendar(2024, 3, 1));
        CHECK_FALSE(contacts.Insert(7));
        CHECK(practice.bridge.requests.at(3) == Golden("certificate", "contatto-una-residenza"));
    }
}
