// Hosts that scenarios do not have: one whose session does not keep what it is given, or faults when it is read; one
// whose columns pad.
#include "host/fault.h"
#include "host/path.h"
#include "prescription/registration.h"
#include "prescription/ricetta_rows.h"
#include "prescription/session_closing.h"
#include "tests/support/practice.h"
#include "ui/form_ricetta_result.h"

#include <doctest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using namespace vellumo;
using namespace vellumo::tests;
using Lines = std::vector<std::string>;

namespace
{

std::string Reply(const std::string& service, const std::string& content)
{
    return R"(<SOAP-ENV:Envelope xmlns:SOAP-ENV="e" xmlns:m="m"><SOAP-ENV:Body><m:GSSC.)" + service +
           "Response><param>" + content + "</param></m:GSSC." + service +
           "Response></SOAP-ENV:Body></SOAP-ENV:Envelope>";
}

struct Office : Practice
{
    Office()
    {
        objects.settings = {{"CCEAbilitaLog", false}};
        connection->rowsOf = [](const std::string&) -> Rows {
            return {{{"PAZ_Indirizzo", "Via Roma, 1"}, {"CodiceAIC_1", {}}, {"CodiceAIC_2", {}}}};
        };
    }

    // Registers number `number` of the form 7; SISS gives it `code`, "" when its reply is lost.
    bool Register(std::int32_t number, const std::string& code)
    {
        prescriptions.form = {{7, number}};
        bridge.reply = code.empty() ? std::string()
                                    : Reply("registraPrescrizione",
                                            "<rispostaRicettaRegistrata><datiRisposta><datiAmministrativiPrescrizione>"
                                            "<identificativoUnivoco>" +
                                                code +
                                                "</identificativoUnivoco></datiAmministrativiPrescrizione>"
                                                "</datiRisposta></rispostaRicettaRegistrata>");
        return prescription::Registration(context).Run(session, 7, number, host::kindDrugs);
    }

    // The host has no row, so that the lines say whose each code is.
    bool Close(const Lines& codes)
    {
        std::string results;
        for (const auto& code : codes)
        {
            results += "<risultatoRegistrazione><esitoRegistrazione>OK</esitoRegistrazione><identificativoUnivoco>" +
                       code + "</identificativoUnivoco></risultatoRegistrazione>";
        }
        bridge.reply = Reply("fineFasePrescrittiva", "<datiRisposta>" + results + "</datiRisposta>");
        utils->written.clear();
        return prescription::SessionClosing(context).Run(session);
    }

    // Codes in the folder of traces that are in no row and no line.
    [[nodiscard]] Lines OpenCodes() const
    {
        Lines codes;
        std::error_code none;
        const auto folder = host::NativePath(installation.Path("host\\SISS\\Tracce"));
        for (const auto& entry : std::filesystem::directory_iterator(folder, none))
        {
            std::ifstream file(entry.path(), std::ios::binary);
            for (std::string line; std::getline(file, line);)
            {
                if (line.starts_with("*"))
                {
                    codes.push_back(line.substr(line.rfind('\t') + 1));
                    codes.back().pop_back(); // CR
                }
            }
        }
        return codes;
    }

    FakeSession session;
};

} // namespace

TEST_SUITE("prescription")
{
    TEST_CASE("a code that the session does not keep goes to the journal, and the operator is told")
    {
        Office office;
        office.session.expired = true;
        CHECK_FALSE(office.Register(1, "A"));
        CHECK(office.desktop.Told().find("Sessione scaduta.") != std::string::npos);
        CHECK(
            office.utils->written ==
            Lines{
                "DA CONTROLLARE: Ricetta farmaci 7, numero 1: codici del SISS non salvati (IUP A). Sessione scaduta."});
        CHECK(office.OpenCodes().empty());
    }

    TEST_CASE("the code of a prescription that the session did not keep is nobody else's at the close")
    {
        Office office;
        CHECK(office.Register(1, "A"));
        office.session.expired = true;
        CHECK_FALSE(office.Register(2, "B"));
        office.session.expired = false;
        CHECK(office.Register(3, ""));
        office.desktop.showWindow = [](ui::Form& form)
        {
            form.Activated();
            if (auto* const results = dynamic_cast<ui::FormRicettaResult*>(&form))
            {
                results->Clicked(Find<ui::Button>(*results, "&Stampa"));
            }
        };
        CHECK(office.Close({"A", "B", "C"}));
        const std::string noRow = "La ricetta non è nella tabella RicettaSSN.";
        const std::string toCheck = "DA CONTROLLARE: Ricetta farmaci 7, numero ";
        CHECK(office.utils->written ==
              Lines{toCheck + "1: codici del SISS non salvati (IUP A). " + noRow,
                    toCheck + "3: esito del SISS non salvato. " + noRow,
                    toCheck + "2: esito finale senza una ricetta in cui salvarlo (IUP B). Verificare sul SISS.",
                    toCheck + "1: codici del SISS non salvati (IUP A). " + noRow,
                    toCheck + "3: IUP nessuno alla registrazione, IUP C alla chiusura. Verificare sul SISS.",
                    toCheck + "3: codici del SISS non salvati (IUP C). " + noRow});
        CHECK(office.OpenCodes().empty());
    }

    TEST_CASE("a session that kept a response although it faulted: the result is its prescription's")
    {
        Office office;
        office.session.expired = true;
        office.session.keepsExpired = true;
        CHECK_FALSE(office.Register(1, "A"));
        office.session.expired = false;
        CHECK(office.Close({"A"}));
        const std::string lost = "DA CONTROLLARE: Ricetta farmaci 7, numero 1: codici del SISS non salvati (IUP A). "
                                 "La ricetta non è nella tabella RicettaSSN.";
        CHECK(office.utils->written == Lines{lost, lost}); // at registration's code, and at the final result
    }

    TEST_CASE("a session that has lost its options is closed all the same")
    {
        Office office;
        CHECK(office.Register(1, "A"));
        office.session.options = nullptr;
        CHECK(office.Close({"A"}));
        CHECK(office.OpenCodes().empty());
    }

    TEST_CASE("a session that faults while it is read: the codes read before are told, the others stay in the folder")
    {
        Office office;
        CHECK(office.Register(1, "A"));
        CHECK(office.Register(2, "B"));
        CHECK(office.OpenCodes() == Lines{"IUP A", "IUP B"});
        office.session.expired = true;
        CHECK_FALSE(office.Close({"A", "B"}));
        CHECK(office.utils->written == Lines{"Chiusura della sessione di prescrizione interrotta: Sessione scaduta.",
                                             "DA CONTROLLARE: Ricetta farmaci 7, numero 1: IUP A senza conferma alla "
                                             "chiusura. Verificare sul SISS."});
        CHECK(office.OpenCodes() == Lines{"IUP B"});
    }

    TEST_CASE("the code of a row that the host refuses to save is still there: nothing to tell")
    {
        Office office;
        StoredRow row = {.columns = {{"CodiceIUP", "0300A4000000009"}}, .saves = false};
        MemoryRecord record(row);
        const prescription::SentPrescription sent = {host::kindDrugs, std::make_shared<service::ServiceResponse>(),
                                                     std::make_shared<prescription::RicettaRecord>()};
        CHECK(prescription::RicettaRows(office.context).SaveWithCode(record, sent, "0300A4000000001") ==
              prescription::refusedSave);
        CHECK(office.utils->written.empty());
        CHECK(office.OpenCodes().empty());
    }

    TEST_CASE("a column that pads its codes holds the same code, and only another one goes to the journal")
    {
        struct Code
        {
            const char* stored;
            const char* replaced; // in the journal; "" nothing
        };
        for (const auto& code : {Code{"0300A4000000001     ", ""}, Code{"     ", ""}, Code{"", ""},
                                 Code{"0300A4000000009     ", "0300A4000000009"}})
        {
            CAPTURE(std::string(code.stored));
            Practice practice;
            StoredRow row = {.columns = {{"CodiceIUP", code.stored}}};
            MemoryRecord record(row);
            const prescription::SentPrescription sent = {host::kindDrugs, std::make_shared<service::ServiceResponse>(),
                                                         std::make_shared<prescription::RicettaRecord>()};
            CHECK(prescription::RicettaRows(practice.context).SaveWithCode(record, sent, "0300A4000000001").empty());
            CHECK(row.columns.at("CodiceIUP").ToText() == "0300A4000000001");
            const std::string line = "DA CONTROLLARE: Ricetta farmaci 0: IUP " + std::string(code.replaced) +
                                     " sostituito nella tabella RicettaSSN, IUP attuale 0300A4000000001. "
                                     "Verificare sul SISS.";
            CHECK(practice.utils->written == (*code.replaced == '\0' ? Lines() : Lines{line}));
        }
    }
}
