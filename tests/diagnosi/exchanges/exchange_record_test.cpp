#include "diagnosi/exchanges/exchange_record.h"
#include "diagnosi/exchanges/outcome_words.h"
#include "tests/support/installation.h"

#include <doctest.h>

#include <string>
#include <vector>

using namespace vellumo;
using namespace vellumo::diagnosi;

namespace
{

std::string ReplyOf(const std::string& element, const std::string& content)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><SOAP-ENV:Envelope xmlns:SOAP-ENV=\"urn:s\" "
           "xmlns:m=\"urn:m\"><SOAP-ENV:Body><m:" +
           element + "Response>" + content + "</m:" + element + "Response></SOAP-ENV:Body></SOAP-ENV:Envelope>";
}

const std::string registeredReply =
    ReplyOf("GSSC.registraPrescrizione", "<param><rispostaRicettaRegistrata><esitoServizio>OK</esitoServizio>"
                                         "</rispostaRicettaRegistrata></param>");
const std::string phaseReply = ReplyOf("GSSC.inizioFasePrescrittiva", "<param><datiRisposta/></param>");
const std::string refusedReply = ReplyOf("GSSC.inizioFasePrescrittiva",
                                         "<param><esitoNegativo><codiceErrore>PDCAR001</codiceErrore><descErrore>Carta"
                                         "</descErrore></esitoNegativo></param>");
const std::string foundReply = ReplyOf("ICCE.identificaCittadinoGUI", "<esitoIdentifica/>");

class LoggedCalls
{
public:
    LoggedCalls()
    {
        m_installation.Write("Log\\note.txt", "");
        m_installation.Write("Log\\2024-02-30 10.00.00", "");
    }

    void Call(const std::string& folder, int number, const std::string& service, const std::string& reply)
    {
        const std::string begin = "Log\\" + folder + "\\" + std::to_string(number);
        m_installation.Write(begin + " - Richiesta " + service, "<richiesta/>");
        m_installation.Write(begin + " - Risposta " + service, reply);
    }
    void File(const std::string& name, std::string_view bytes) { m_installation.Write("Log\\" + name, bytes); }
    [[nodiscard]] ExchangeRecord Read(const Period& period = {}) const
    {
        return ReadExchanges(m_installation.Path("Log"), period);
    }

private:
    tests::Installation m_installation;
};

// "Prescriptions 7 8 9" and so on.
std::vector<std::string> Arranged(const ExchangeRecord& record)
{
    const std::vector<std::string> kinds = {"Identification", "Certificate", "Contact",
                                            "Prescriptions",  "Other",       "NoCalls"};
    std::vector<std::string> told;
    for (const Operation& operation : record.operations)
    {
        std::string text = kinds.at(static_cast<std::size_t>(operation.kind));
        for (const Call& call : operation.calls)
        {
            text += ' ' + std::to_string(call.number);
        }
        told.push_back(text);
    }
    return told;
}

} // namespace

TEST_CASE("Folders become operations, and a prescribing session is one wherever its calls lie")
{
    LoggedCalls log;
    log.Call("2024-03-05 10.00.00", 1, "Identifica Cittadino GUI", foundReply);
    log.Call("2024-03-05 10.00.00", 2, "Inizia Fase Prescrittiva", refusedReply);
    log.Call("2024-03-05 10.00.00", 3, "Inizia Fase Prescrittiva", phaseReply);
    log.Call("2024-03-05 10.00.00", 4, "Registra Prescrizione Farmaci", registeredReply);
    // Another patient is identified while the session is open.
    log.Call("2024-03-05 10.05.00", 5, "Identifica Cittadino Esteso", foundReply);
    log.Call("2024-03-05 10.05.00", 6, "Registra Prescrizione Accertamenti", registeredReply);
    log.Call("2024-03-05 10.05.00", 7, "Fine Fase Prescrittiva", phaseReply);
    log.Call("2024-03-05 10.05.00", 10, "Inizia Fase Prescrittiva", phaseReply);
    // Another program, in between.
    log.Call("2024-03-05 10.02.00", 1, "Invia Certificato", "");
    log.Call("2024-03-05 10.02.00", 2, "Inserimento Contatto", "");
    log.Call("2024-03-05 10.02.00", 3, "Registra Prescrizione Farmaci", "");
    log.File("2024-03-06 08.00.00\\appunti.doc", "");
    log.File("2024-03-06 08.00.00\\0 - Richiesta Identifica Cittadino GUI", "");

    const auto record = log.Read();
    CHECK(Arranged(record) == std::vector<std::string>{"Identification 1", "Prescriptions 2 3 4 6 7", "Certificate 1",
                                                       "Contact 2", "Prescriptions 3", "Identification 5",
                                                       "Prescriptions 10", "NoCalls"});
    CHECK(record.operations[1].calls[3].folder == "2024-03-05 10.05.00");
    CHECK(record.skipped.size() == 4);

    Period day;
    day.firstDay = day.lastDay = *host::Date::FromCalendar(2024, 3, 6);
    CHECK(Arranged(log.Read(day)) == std::vector<std::string>{"NoCalls"});
    CHECK(ReadExchanges("C:\\non\\c'è").operations.empty());
}

TEST_CASE("What a call's files hold, and how the call ended")
{
    LoggedCalls log;
    const std::string folder = "2024-03-05 10.00.00";
    log.Call(folder, 1, "Identifica Cittadino GUI", foundReply + "<!-- Niccol\xF2 \x80 -->");
    log.Call(folder, 2, "Identifica Cittadino GUI", "ERRORE: citt\xE0");
    log.Call(folder, 3, "Identifica Cittadino GUI", "");
    log.File(folder + "\\4 - Richiesta Identifica Cittadino GUI", "\xEF\xBB\xBF<citt\xC3\xA0/>");
    log.Call(folder, 5, "Identifica Cittadino GUI",
             "<env:Envelope xmlns:env=\"urn:e\"><env:Body><env:Fault><faultcode>F1</faultcode><faultstring>Guasto"
             "</faultstring></env:Fault></env:Body></env:Envelope>");
    log.Call(folder, 6, "Identifica Cittadino GUI", ReplyOf("ICCE.identificaCittadinoGUI", "<altro/>"));
    log.Call(folder, 7, "Modifica Contatto",
             ReplyOf("ICCE.modificaDatiContatto",
                     "<esitoModificaContatto><esitoServizio>N</esitoServizio></esitoModificaContatto>"));
    log.Call(
        folder, 8, "Fine Fase Prescrittiva",
        ReplyOf("GSSC.fineFasePrescrittiva",
                "<param><datiRisposta><risultatoRegistrazione><esitoRegistrazione>OK</esitoRegistrazione>"
                "<idModulo>0302</idModulo><identificativoUnivoco>0300A4</identificativoUnivoco>"
                "</risultatoRegistrazione><risultatoRegistrazione><esitoRegistrazione>KO</esitoRegistrazione>"
                "<messaggioRegistrazione>No</messaggioRegistrazione></risultatoRegistrazione><risultatoRegistrazione>"
                "<esitoNegativo><codiceErrore>X1</codiceErrore></esitoNegativo></risultatoRegistrazione>"
                "</datiRisposta></param>"));
    log.Call(folder, 9, "Inizia Fase Prescrittiva", refusedReply);
    log.Call(folder, 10, "Invia Certificato",
             ReplyOf("GCM.invioCertificatoMalattia",
                     "<param><rispostaInvioCertificato><datiINPS><protocolloINPS>350000001</protocolloINPS></datiINPS>"
                     "</rispostaInvioCertificato></param>"));
    log.Call(folder, 11, "Inserimento Contatto",
             ReplyOf("ICCE.inserisciDatiContatto",
                     "<esitoInserisciContatto><esitoServizio>Q</esitoServizio></esitoInserisciContatto>"));

    std::vector<diagnosi::Call> calls;
    for (const Operation& operation : log.Read().operations)
    {
        calls.insert(calls.end(), operation.calls.begin(), operation.calls.end());
    }
    REQUIRE(calls.size() == 11);
    using Kind = Outcome::Kind;
    const std::vector<Kind> kinds = {Kind::Accepted,  Kind::NotXml,    Kind::NothingCame, Kind::NothingCame,
                                     Kind::SoapFault, Kind::NoOutcome, Kind::Refused,     Kind::Accepted,
                                     Kind::Refused,   Kind::Accepted,  Kind::OddOutcome};
    for (std::size_t i = 0; i < kinds.size(); ++i)
    {
        CAPTURE(i);
        CHECK(calls[i].outcome.kind == kinds[i]);
    }
    CHECK(calls[0].reply->ends_with("<!-- Niccolò € -->"));
    CHECK(calls[0].replyTime >= calls[0].requestTime);
    CHECK(calls[1].outcome.text == "ERRORE: città");
    CHECK(calls[1].outcome.code == "SEBCONT0001");
    CHECK(calls[3].request == "<città/>");
    CHECK(!calls[3].reply);
    CHECK(calls[4].outcome.code == "F1");
    CHECK(calls[7].outcome.unconfirmed.Count() == 2);
    CHECK(calls[7].outcome.IsBad());
    REQUIRE(calls[7].outcome.given.size() == 1);
    CHECK(calls[7].outcome.given[0].iup + ' ' + calls[7].outcome.given[0].protocol == "0300A4 0302");
    CHECK(calls[8].outcome.code == "PDCAR001");
    CHECK(WordsOf(calls[9]).said == "protocollo INPS 350000001");
    CHECK(WordsOf(calls[10]).said == "esito Q");
}
