// Hosts that scenarios do not have: one whose session does not keep what it is given, one whose columns pad.
#include "host/fault.h"
#include "prescription/registration.h"
#include "prescription/ricetta_rows.h"
#include "tests/support/practice.h"

#include <doctest.h>

#include <string>
#include <vector>

using namespace vellumo;
using namespace vellumo::tests;

TEST_SUITE("prescription")
{
    TEST_CASE("a code that the session does not keep goes to the journal, and the operator is told")
    {
        Practice practice;
        practice.objects.settings = {{"CCEAbilitaLog", false}};
        practice.prescriptions.form = {{7, 1}, {7, 2}};
        practice.bridge.reply =
            R"(<SOAP-ENV:Envelope xmlns:SOAP-ENV="e" xmlns:m="m"><SOAP-ENV:Body>)"
            "<m:GSSC.registraPrescrizioneResponse><param><rispostaRicettaRegistrata><datiRisposta>"
            "<datiAmministrativiPrescrizione><identificativoUnivoco>0300A4000000001</identificativoUnivoco>"
            "</datiAmministrativiPrescrizione></datiRisposta></rispostaRicettaRegistrata></param>"
            "</m:GSSC.registraPrescrizioneResponse></SOAP-ENV:Body></SOAP-ENV:Envelope>";
        practice.connection->rowsOf = [](const std::string&) -> Rows {
            return {{{"PAZ_Indirizzo", "Via Roma, 1"}, {"CodiceAIC_1", {}}, {"CodiceAIC_2", {}}}};
        };
        FakeSession session; // keeps nothing
        CHECK_FALSE(prescription::Registration(practice.context).Run(session, 7, 0, host::kindDrugs));
        CAPTURE(practice.desktop.Told());
        CHECK(practice.bridge.requests.size() == 1);
        CHECK(practice.desktop.Told().find("Sessione scaduta.") != std::string::npos);
        CHECK(practice.utils->written ==
              std::vector<std::string>{"Ricetta 7, numero 1: codici del SISS non salvati (IUP "
                                       "0300A4000000001, protocollo ). Sessione scaduta."});
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
            CHECK(prescription::RicettaRows(practice.context).SaveWithCode(record, sent, "0300A4000000001") == nullptr);
            CHECK(row.columns.at("CodiceIUP").ToText() == "0300A4000000001");
            const std::string line = "Ricetta 0, numero 0: IUP " + std::string(code.replaced) +
                                     " sostituito nella tabella RicettaSSN, IUP attuale 0300A4000000001. "
                                     "Verificare sul SISS.";
            CHECK(practice.utils->written ==
                  (*code.replaced == '\0' ? std::vector<std::string>() : std::vector<std::string>{line}));
        }
    }
}
