// What of the update cannot be reached through IdentificaPaziente, which always forces it, and failures of the list's
// import that no host can be made to cause.
#include "patient/patient_list_import.h"
#include "patient/patient_update.h"
#include "tests/support/fake_host.h"
#include "tests/support/installation.h"
#include "ui/form_esenzioni.h"
#include "ui/form_paziente_changes.h"

#include <doctest.h>

#include <cmath>
#include <deque>
#include <memory>
#include <new>
#include <string>

using namespace vellumo;
using namespace vellumo::tests;

namespace
{

// Confirms every form by its default button and answers prompts from a list.
class ConfirmingDesktop final : public ui::Desktop
{
public:
    ui::Answer Show(const ui::Prompt& prompt) override
    {
        prompts.push_back(prompt);
        const ui::Answer answer = answers.empty() ? ui::Answer::Ok : answers.front();
        if (!answers.empty())
        {
            answers.pop_front();
        }
        return answer;
    }
    void ShowModal(ui::Form& form) override
    {
        titles.push_back(form.Title());
        form.Activated();
        for (ui::Control* control : form.Controls())
        {
            const auto* button = dynamic_cast<ui::Button*>(control);
            if (button != nullptr && button->text == "&Conferma")
            {
                form.Clicked(*control);
            }
        }
        REQUIRE(form.IsClosed());
    }
    std::optional<std::string> AskFile(const std::string&, const std::string&) override { return file; }

    std::optional<std::string> file;
    std::deque<ui::Answer> answers;
    std::vector<ui::Prompt> prompts;
    std::vector<std::string> titles;
};

class OneRecordObjects final : public host::HostObjects
{
public:
    std::unique_ptr<host::Record> CreateRecord(host::RecordKind kind, const host::HostServices&) override
    {
        return std::make_unique<MemoryRecord>(kind == host::RecordKind::Patient ? patient : other);
    }
    std::unique_ptr<host::PracticeSettings> CreateSettings(const host::HostServices&) override { return nullptr; }

    StoredRow patient;
    StoredRow other;
};

// A citizen who is patient 7 of the practice.
struct Practice
{
    Practice()
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
        services.connection = connection;
        services.utils = utils;
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
    Installation installation;
    std::shared_ptr<FakeConnection> connection = std::make_shared<FakeConnection>();
    std::shared_ptr<FakeUtils> utils = std::make_shared<FakeUtils>();
    host::HostServices services;
    OneRecordObjects objects;
    ConfirmingDesktop desktop;
    FakeBridge bridge;
    environment::SISSEnvironment environment = {installation.settings, installation.clock};
    service::ServiceFactory factory = service::ServiceFactory(installation.settings);
    service::ExchangeLog log = {services, objects, installation.settings, installation.clock};
    service::ServiceSender sender = {bridge, factory, log, desktop};
    service::ServiceResponse response;
    NoPrescriptions prescriptions;
    service::ProviderContext context = {
        services, objects, prescriptions, installation.settings, installation.clock, desktop, environment, factory,
        sender,   log};
};

} // namespace

TEST_SUITE("patient")
{
    TEST_CASE("a patient updated less than 31 days ago is left alone without a question")
    {
        Practice practice;
        practice.LastUpdated(30);
        CHECK(practice.Update(true, false) == 7);
        CHECK(practice.Update(false, false) == 7);
        CHECK(practice.objects.patient.saved == 0);
        CHECK(practice.desktop.prompts.empty());
        CHECK(practice.desktop.titles.size() == 2); // the exemptions are asked for before the patient is looked up
    }

    TEST_CASE("from the 31st day on the operator is asked, when that is wanted")
    {
        Practice practice;
        practice.LastUpdated(31);
        practice.desktop.answers = {ui::Answer::No, ui::Answer::Yes};
        CHECK(practice.Update(true, false) == 7);
        CHECK(practice.objects.patient.saved == 0);
        REQUIRE(practice.desktop.prompts.size() == 1);
        CHECK(practice.desktop.prompts[0].text ==
              "Il paziente non viene aggiornato da 31 giorni.\r\nSi vuole aggiornare adesso?");
        CHECK(practice.desktop.prompts[0].defaultButton == 2);
        CHECK(practice.Update(true, false) == 7);
        CHECK(practice.objects.patient.saved == 1);
        practice.LastUpdated(31);
        CHECK(practice.Update(false, false) == 7);
        CHECK(practice.objects.patient.saved == 2);
        CHECK(practice.desktop.prompts.size() == 2);
    }

    TEST_CASE("force and an empty date of the last update go past the question")
    {
        Practice practice;
        practice.LastUpdated(0);
        CHECK(practice.Update(true, true) == 7);
        practice.objects.patient.columns.erase("CCELastUpdated");
        CHECK(practice.Update(true, false) == 7);
        CHECK(practice.objects.patient.saved == 2);
        CHECK(practice.connection->log == "BCBC");
    }

    TEST_CASE("a matched patient that cannot be read is not overwritten by a new one")
    {
        Practice practice;
        practice.objects.patient.loads = false;
        CHECK(practice.Update(true, true) == 0);
        CHECK(practice.objects.patient.saved == 0);
        CHECK(practice.utils->written.empty());
    }

    TEST_CASE("a refused save takes the whole patient back")
    {
        Practice practice;
        practice.objects.patient.saves = false;
        CHECK_THROWS_AS(practice.Update(true, true), host::Fault);
        CHECK(practice.connection->log == "BR");
    }

    TEST_CASE("an empty card number matches nobody")
    {
        Practice practice;
        practice.fiscalCodeOnFile = "ALTRO";
        practice.cardOnFile = "";
        CHECK(practice.Update(true, true) == 900); // a new patient
    }

    TEST_CASE("a new patient to whom the host gives no identifier gets no rows")
    {
        Practice practice;
        practice.fiscalCodeOnFile = "ALTRO";
        practice.objects.patient.newId = 0;
        CHECK_THROWS_AS(practice.Update(true, true), host::Fault);
        practice.installation.Write("elenco.xml", "<assistiti><assistito/></assistiti>");
        CHECK(practice.Import("elenco.xml").find("identificativo") != std::string::npos);
        CHECK(practice.utils->written.empty());
        CHECK(practice.connection->log == "BRBCBR"); // the update, the revocation, the listed patient
    }

    TEST_CASE("a file beyond any memory is a list that cannot be opened")
    {
        Practice practice;
        practice.installation.WriteHuge("film.xml");
        CHECK(practice.Import("film.xml") ==
              "Si è verificato un errore in fase di apertura del documento selezionato.");
        CHECK(practice.connection->log.empty());
    }

    TEST_CASE("an import that breaks off says why, whatever it was")
    {
        Practice practice;
        practice.installation.Write("elenco.xml", "<assistiti/>");
        practice.connection->rowsOf = [](const std::string&) -> std::vector<Columns> { throw std::bad_alloc(); };
        CHECK(practice.Import("elenco.xml") ==
              std::string("Si è verificato un errore in fase di importazione:\r\n") + std::bad_alloc().what());
        CHECK(practice.connection->log == "BR");
    }
}
