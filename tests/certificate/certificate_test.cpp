// Requests compared whole, and what the operations would do if SISS offered the services that it lacks today.
#include "certificate/certificates.h"
#include "certificate/contacts.h"
#include "host/path.h"
#include "tests/support/practice.h"

#include <doctest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <tuple>

using namespace vellumo;
using namespace vellumo::tests;

namespace
{

std::string Receipt(const std::string& protocol, const std::string& date)
{
    return R"(<SOAP-ENV:Envelope xmlns:SOAP-ENV="e" xmlns:m="m"><SOAP-ENV:Body><m:GCM.invioCertificatoMalattiaResponse>)"
           "<param><rispostaInvioCertificato><datiINPS><protocolloINPS>" +
           protocol + "</protocolloINPS><dataRicezione>" + date +
           "</dataRicezione></datiINPS></rispostaInvioCertificato></param>"
           "</m:GCM.invioCertificatoMalattiaResponse></SOAP-ENV:Body></SOAP-ENV:Envelope>";
}

// The lines of codes in the folder of traces, without its heading.
std::string KeptCodes(const Practice& practice)
{
    std::string text;
    std::error_code error;
    const auto folder = host::NativePath(practice.installation.Path("host\\SISS\\Tracce"));
    for (const auto& entry : std::filesystem::directory_iterator(folder, error))
    {
        if (entry.path().filename().string().starts_with("codici"))
        {
            std::ifstream file(entry.path(), std::ios::binary);
            text.assign(std::istreambuf_iterator<char>(file), {});
        }
    }
    return text.erase(0, text.find('\n') + 1);
}

// Saves as it is told to.
class WatchedRecord final : public host::Record
{
public:
    WatchedRecord(host::Record& record, std::function<bool()> save)
        : m_record(record)
        , m_save(std::move(save))
    {
    }

    bool Load(std::int32_t id) override { return m_record.Load(id); }
    void StartNew() override { m_record.StartNew(); }
    [[nodiscard]] host::Value Read(std::string_view column) const override { return m_record.Get(column); }
    void Set(std::string_view column, const host::Value& value) override { m_record.Set(column, value); }
    bool Save() override { return m_save(); }
    [[nodiscard]] std::int32_t Id() const override { return m_record.Id(); }

private:
    host::Record& m_record;
    std::function<bool()> m_save;
};

// A practice with one certificate of one patient.
struct CertificatePractice : Practice
{
    CertificatePractice()
    {
        objects.patient.columns = {{"Nome", "Niccolò"},
                                   {"Cognome", "Dell'Acqua"},
                                   {"CodiceFiscale", "DLLNCL69S02B639C"},
                                   {"Sesso", "M"},
                                   {"DataNascita", *host::Date::FromCalendar(1969, 11, 2)},
                                   {"IDComuneNascita", 28}};
        objects.other.columns = {{"Nome", "Laura"}, {"Cognome", "D'Amico"}, {"CodiceFiscale", "DMCLRA65B50F205I"}};
        utils->valueOf = [](const std::string& sql, const host::Parameters& parameters) -> host::Value
        {
            const bool cantu = parameters.at(0) == host::Value(28);
            CHECK((cantu || parameters.at(0) == host::Value(107)));
            return sql.starts_with("SELECT CodiceISTAT") ? (cantu ? "013041" : "015146")
                   : sql.starts_with("SELECT Comune")    ? (cantu ? "Cantù" : "Milano")
                                                         : (cantu ? "CO" : "MI");
        };
    }

    // The address that the last parameter asks for, as Utils hands both over.
    void LivesAt(const Rows& domicile, const Rows& residence) const
    {
        utils->rowsOf = [=, asked = 0](const std::string& sql) mutable -> Rows
        {
            CHECK(sql.starts_with("SELECT Residenza.Indirizzo, Norda..Comune.Cap"));
            return ++asked % 2 == 1 ? domicile : residence; // the domicile is looked up first
        };
    }

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
        CertificatePractice practice;
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
        CertificatePractice practice;
        practice.desktop.showWindow = [](ui::Form& form)
        {
            form.Activated();
            throw host::Fault("La finestra non si chiude.");
        };
        practice.bridge.reply = Receipt("350000007", "20240305103000");
        CHECK_FALSE(certificate::Certificates(practice.context).Send(&practice.certificate));
        CHECK(practice.stored.columns.at("NumeroProtocollo") == host::Value("350000007"));
        CHECK(practice.stored.saved == 1);
    }

    TEST_CASE("INPS's number is kept until the record is saved or its line is written")
    {
        struct Case
        {
            bool saves;
            bool journalWrites;
            char left;
        };
        for (const Case& each : {Case{true, true, '-'}, {false, true, '-'}, {false, false, '*'}})
        {
            CAPTURE(each.saves);
            CAPTURE(each.journalWrites);
            CertificatePractice practice;
            practice.bridge.reply = Receipt("350000007", "20240305103000");
            std::string whileSaving;
            WatchedRecord certificate(practice.certificate,
                                      [&]
                                      {
                                          whileSaving = KeptCodes(practice);
                                          if (!each.journalWrites)
                                          {
                                              practice.services.utils = nullptr;
                                          }
                                          return each.saves;
                                      });
            CHECK_FALSE(certificate::Certificates(practice.context).Send(&certificate));
            const std::string entry = "\tCertificato del paziente 7\tprotocollo INPS 350000007\r\n";
            CHECK(whileSaving.starts_with("*1\t"));
            CHECK(whileSaving.ends_with(entry));
            CHECK(KeptCodes(practice).front() == each.left);
            CHECK(practice.desktop.prompts.size() == (each.saves ? 1 : 2));
        }
    }

    TEST_CASE("once SISS offers it, a rectification carries the number on, and a cancellation keeps it")
    {
        CertificatePractice practice;
        const std::string request =
            R"(<SOAP-ENV:Envelope xmlns:SOAP-ENV="e" xmlns:m="m"><SOAP-ENV:Body><m:richiesta><certificato><dataFine/>)"
            "<protocolloDaRettificare/><protocolloDaCancellare/></certificato></m:richiesta></SOAP-ENV:Body>"
            "</SOAP-ENV:Envelope>";
        practice.factory.texts = {{service::rtRettificaCertificato, request}, {service::rtAnnullaCertificato, request}};
        const certificate::Certificates certificates(practice.context);
        auto& columns = practice.stored.columns;
        columns.insert_or_assign("NumeroProtocollo", "350000007");
        practice.bridge.reply = Receipt("", "20240305");
        CHECK_FALSE(certificates.Send(&practice.certificate));
        CHECK(practice.stored.saved == 0);
        for (const char* protocol : {"350000008", "350000009"})
        {
            const auto before = columns.at("NumeroProtocollo");
            practice.bridge.reply = Receipt(protocol, "2024-03-06T08:00:00");
            CHECK_FALSE(certificates.Send(&practice.certificate));
            CHECK(columns.at("NumeroProtocollo") == host::Value(protocol));
            CHECK(columns.at("NumeroProtocolloOrigine") == before);
            CHECK(columns.at("DataRicezione") == host::Value(*host::Date::FromCalendar(2024, 3, 6, 8)));
        }
        CHECK(practice.bridge.requests.at(1).find("<dataFine>20240309</dataFine><protocolloDaRettificare>350000007<") !=
              std::string::npos);

        practice.bridge.reply = Receipt("350000010", "quando?");
        CHECK_FALSE(certificates.Cancel(&practice.certificate));
        CHECK(practice.bridge.requests.at(3).find("<protocolloDaCancellare>350000009<") != std::string::npos);
        CHECK(columns.at("NumeroProtocollo") == host::Value("350000009"));
        CHECK(columns.at("NumeroProtocolloAnnullamento") == host::Value("350000010"));
        CHECK(columns.at("DataRicezione").IsNull());
        CHECK(practice.stored.saved == 3);
        practice.bridge.reply = "<altro/>";
        CHECK_FALSE(certificates.Cancel(&practice.certificate));
        CHECK(practice.stored.saved == 3);
        CHECK(practice.desktop.Told() == "Errore!!: Si è verificato un errore in fase di invio del certificato.\n"
                                         "Informazione: Certificato rettificato con successo.\n"
                                         "Informazione: Certificato rettificato con successo.\n"
                                         "Informazione: Certificato annullato con successo.\n"
                                         "Errore!!: Si è verificato un errore in fase di annullamento del "
                                         "certificato.\n");
    }

    TEST_CASE("a date that is text and cannot be read does not go out as none")
    {
        for (const auto& [date, sent] : {std::pair(host::Value("fine mese"), ""),
                                         {host::Value("9/3/2024"), ""},
                                         {host::Value(45360.75), "20240309"},
                                         {host::Value("2024-03-09"), "20240309"}})
        {
            const std::string text = date.ToText();
            CAPTURE(text);
            CertificatePractice practice;
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
        CertificatePractice practice;
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
