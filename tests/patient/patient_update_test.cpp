// What of the update cannot be reached through IdentificaPaziente, which always forces it, and failures of the list's
// import that no host can be made to cause.
#include "patient/patient_list_import.h"
#include "patient/patient_update.h"
#include "tests/support/practice.h"

#include <doctest.h>

#include <cmath>
#include <new>
#include <string>
#include <vector>

using namespace vellumo;
using namespace vellumo::tests;

namespace
{

// Confirms every window that waits for it.
void Confirm(ui::Form& form)
{
    form.Activated();
    if (!form.IsClosed())
    {
        form.Clicked(Find<ui::Button>(form, "&Conferma"));
    }
    REQUIRE(form.IsClosed());
}

// A citizen who is patient 7 of the practice.
struct CitizenPractice : Practice
{
    CitizenPractice()
    {
        utils->valueOf = [this](const std::string& sql, const host::Parameters& parameters) -> host::Value
        {
            if (sql.find("IDPaziente FROM Paziente") == std::string::npos)
            {
                return {};
            }
            const bool byCard = sql.find("NumTesseraSanitaria") != std::string::npos;
            return parameters.at(0).ToText() == (byCard ? cardOnFile : fiscalCodeOnFile) ? host::Value(7)
                                                                                         : host::Value();
        };
        objects.patient.columns["CodiceFiscale"] = "CF";
        desktop.showWindow = Confirm;
        response.Data = xml::Document::FromText("<d><datiCittadino><codiceFiscaleCittadino>CF</codiceFiscaleCittadino>"
                                                "<codiceSanitarioCittadino/></datiCittadino></d>")
                            ->Root();
    }

    std::int32_t Update(bool askIfRecent, bool force)
    {
        return patient::PatientUpdate(context).UpdatePatientFromCitizen(response, askIfRecent, force);
    }

    // The list that the operator chooses, and what he reads in the end.
    std::string Import(const std::string& list)
    {
        desktop.file = installation.Path(list);
        CHECK_FALSE(patient::PatientListImport(context).Run());
        REQUIRE(desktop.prompts.size() == 1);
        return desktop.prompts[0].text;
    }

    // Calendar days before the clock's today, late in the evening: days count by midnights.
    void LastUpdated(int days)
    {
        const double now = std::floor(installation.clock.now.ToOle());
        objects.patient.columns["CCELastUpdated"] = host::Date::FromOle(now - days + 0.99);
    }

    std::string fiscalCodeOnFile = "CF";
    std::string cardOnFile = "TS";
    service::ServiceResponse response;
};

} // namespace

TEST_SUITE("patient")
{
    // The operations always force the update.
    TEST_CASE("from the 31st day on the operator is asked, when that is wanted; before that nothing happens")
    {
        CitizenPractice practice;
        practice.LastUpdated(30);
        CHECK(practice.Update(false, false) == 7);
        CHECK(practice.objects.patient.saved == 0);
        practice.LastUpdated(31);
        practice.desktop.answers = {ui::Answer::No};
        CHECK(practice.Update(true, false) == 7);
        CHECK(practice.objects.patient.saved == 0);
        REQUIRE(practice.desktop.prompts.size() == 1);
        CHECK(practice.desktop.prompts[0].text ==
              "Il paziente non viene aggiornato da 31 giorni.\r\nSi vuole aggiornare adesso?");
        CHECK(practice.desktop.prompts[0].defaultButton == 2);
        CHECK(practice.Update(false, false) == 7);
        CHECK(practice.objects.patient.saved == 1);
    }

    TEST_CASE("a matched patient that cannot be read is not overwritten by a new one")
    {
        CitizenPractice practice;
        practice.objects.patient.loads = false;
        CHECK(practice.Update(true, true) == 0);
        CHECK(practice.objects.patient.saved == 0);
        CHECK(practice.utils->written ==
              std::vector<std::string>{
                  "Il paziente 7, che il SISS ha identificato, non può essere letto: non è stato aggiornato."});
    }

    TEST_CASE("a refused save takes the whole patient back")
    {
        CitizenPractice practice;
        practice.objects.patient.saves = false;
        CHECK_THROWS_AS(practice.Update(true, true), host::Fault);
        CHECK(practice.connection->log == "BR");
    }

    TEST_CASE("an empty card number matches nobody")
    {
        CitizenPractice practice;
        practice.fiscalCodeOnFile = "ALTRO";
        practice.cardOnFile = "";
        CHECK(practice.Update(true, true) == 900); // a new patient
    }

    TEST_CASE("a new patient to whom the host gives no identifier gets no rows")
    {
        CitizenPractice practice;
        practice.fiscalCodeOnFile = "ALTRO";
        practice.objects.patient.newId = 0;
        CHECK_THROWS_AS(practice.Update(true, true), host::Fault);
        practice.installation.Write("elenco.xml", "<assistiti><assistito><cognome>A</cognome></assistito></assistiti>");
        CHECK(practice.Import("elenco.xml").find("identificativo") != std::string::npos);
        CHECK(practice.utils->written ==
              std::vector<std::string>{
                  "DA CONTROLLARE: Importazione dell'elenco assistiti interrotta: importati 0 di 1. Gli altri pazienti "
                  "restano revocati. L'importazione si può ripetere. Motivo: Il programma non ha dato un "
                  "identificativo al paziente."});
        CHECK(practice.connection->log == "BRBCBR"); // the update, the revocation, the listed patient
    }

    TEST_CASE("a file beyond any memory is a list that cannot be opened")
    {
        CitizenPractice practice;
        practice.installation.WriteHuge("film.xml");
        CHECK(practice.Import("film.xml") ==
              "Si è verificato un errore in fase di apertura del documento selezionato.");
        CHECK(practice.connection->log.empty());
    }

    TEST_CASE("an import that breaks off says why, whatever it was")
    {
        CitizenPractice practice;
        practice.installation.Write("elenco.xml", "<assistiti/>");
        practice.connection->rowsOf = [](const std::string&) -> Rows { throw std::bad_alloc(); };
        CHECK(practice.Import("elenco.xml") ==
              std::string("Si è verificato un errore in fase di importazione:\r\n") + std::bad_alloc().what());
        CHECK(practice.connection->log == "BR");
    }
}
