// The registration request of one prescription, filled through the delivered templates and compared whole.
#include "environment/files.h"
#include "host/fault.h"
#include "prescription/payload.h"
#include "service/service_factory.h"
#include "tests/support/fake_host.h"
#include "tests/support/installation.h"

#include <doctest.h>

#include <string>

using namespace vellumo;
using namespace vellumo::prescription;
using namespace vellumo::tests;
using host::kindDrugs;
using host::kindTests;
using host::Value;

namespace
{

// What the host's database answers about exemptions.
struct Exemptions
{
    Value validUntil;     // of the patient's exemption on the day of the prescription
    std::string sissCode; // paired with the local one
    bool invalidity = false;
};

struct Case
{
    std::int32_t kind = kindDrugs;
    Columns columns;
    Exemptions exemptions = {};
    std::int32_t type = host::OpzioniRicetta::electronic;
    std::int32_t print = host::oreStampaPromemoria;
};

Columns PatientColumns()
{
    return {{"PAZ_CodiceFiscale", "DNGNCL68L01F205X"},
            {"PAZ_Cognome", "D'Angelo"},
            {"PAZ_Nome", "Nicolò"},
            {"PAZ_Sesso", "M"},
            {"PAZ_DataNascita", *host::Date::FromCalendar(1968, 7, 1)},
            {"PAZ_Eta", 55},
            {"PAZ_Indirizzo", " Via dell'Orso , 12/A , scala B"},
            {"PAZ_Comune", "Cantù"},
            {"CodiceRegioneAsl", "030"},
            {"CodiceRegioneTariffario", "030"},
            {"NumeroAsl", "303"},
            {"SiglaProvinciaAsl", "CO"},
            {"TipoRicetta", "P"},
            {"IDFormatoRicetta", 1},
            {"IDTipoRichiesta", 1},
            {"IDPrioritaRicetta", 5},
            {"IDPaziente", 7},
            {"IDPartecipazioneSpesa", 40},
            {"DataRicetta", *host::Date::FromCalendar(2024, 3, 5)}};
}

Columns With(Columns columns, const Columns& more)
{
    for (const auto& [name, value] : more)
    {
        columns.insert_or_assign(name, value);
    }
    return columns;
}

RicettaRecord RecordOf(const Columns& columns)
{
    RicettaRecord record;
    for (const auto& [name, value] : columns)
    {
        record.SetColumn(name, value);
    }
    return record;
}

xml::Document Fill(const Case& input)
{
    Installation installation;
    installation.WriteTemplates();
    const auto utils = std::make_shared<FakeUtils>();
    utils->valueOf = [&](const std::string& sql, const host::Parameters& parameters) -> Value
    {
        const bool validity = sql.find("SELECT Scadenza FROM EsenzionePerPaziente") == 0;
        CHECK(parameters.size() == (validity ? 3 : 1));
        return validity ? input.exemptions.validUntil : Value(input.exemptions.sissCode);
    };
    utils->rowsOf = [&](const std::string&) -> Rows {
        return {{{"EsenzioneInvalidita", input.exemptions.invalidity}, {"IDTipoEsenzione", 6}}};
    };
    host::HostServices services;
    services.utils = utils;

    const service::ServiceFactory factory(installation.settings);
    auto request = factory.GetRequest(input.kind == kindDrugs ? service::rtRegistraPrescrizioneFarmaci
                                                              : service::rtRegistraPrescrizioneAccertamenti);
    REQUIRE(request);
    const RicettaRecord record = RecordOf(input.columns);
    host::OpzioniRicetta options;
    options.TipoRicetta = input.type;
    options.ModalitaStampa = input.print;
    WriteDatiCittadino(record, *request);
    WriteDatiPrescrizione(record, *request, input.kind, services);
    WriteElencoPrestazioni(record, *request, input.kind);
    WriteOpzioni(options, *request);
    const auto document = xml::Document::FromText(request->ToString());
    REQUIRE(document);
    return *document;
}

// The prescription inside the request.
xml::Node Prescription(const xml::Document& document)
{
    return document.Root().Descendants("nuovaPrescrizione").at(0);
}

std::string Golden(const std::string& name)
{
    return tests::Golden("prescription", name);
}

const Columns twoDrugs = {{"DetailCount", 2},
                          {"PS_GruppoEsenzione", "Y"},
                          {"PS_CodiceIdentificativo", "048"},
                          {"TR_TipoRaggruppamento", 1},
                          {"Annotazioni", "a stomaco pieno"},
                          {"IDPrioritaRicetta", 1},
                          {"Codice_1", "023993013"},
                          {"Descrizione_1", "AUGMENTIN*12CPR RIV 1G"},
                          {"Quantita_1", 2},
                          {"Classe_1", "A"},
                          {"Posologia_1", "1 cpr ogni 12 ore"},
                          {"NotaCuf_1", "0001"},
                          {"Annotazione_1", "a stomaco pieno"},
                          {"Codice_2", "012745028"},
                          {"Descrizione_2", "TACHIPIRINA*20CPR 500MG"},
                          {"Quantita_2", 0},
                          {"Classe_2", "C"},
                          {"Posologia_2", "al bisogno"},
                          {"NotaCuf_2", "000"},
                          {"Annotazione_2", "a stomaco pieno"}};

const Columns oneTest = {{"DetailCount", 2},
                         {"PS_GruppoEsenzione", "N"},
                         {"PS_CodiceIdentificativo", "E01"},
                         {"IDTipoEsenzione", 6},
                         {"IDFormatoRicetta", 2},
                         {"IDTipoRichiesta", 2},
                         {"CodiceRegioneTariffario", "050"},
                         {"IDPrioritaRicetta", 3},
                         {"Annotazioni", ""},
                         {"Codice_1", "90.62.2"},
                         {"Descrizione_1", "EMOCROMO"},
                         {"Quantita_1", 0},
                         {"Classe_1", ""},
                         {"Codice_2", "89.7"},
                         {"Descrizione_2", "VISITA GENERALE"},
                         {"Quantita_2", 1.5},
                         {"Classe_2", ""}};

} // namespace

TEST_SUITE("prescription")
{
    TEST_CASE("whole requests")
    {
        std::string question;
        for (int letter = 0; letter < 120; ++letter)
        {
            question += "è";
        }
        CHECK(Fill({kindDrugs, With(PatientColumns(), twoDrugs)}).Xml() == Golden("farmaci-elettronica"));
        CHECK(Fill({.kind = kindDrugs,
                    .columns = With(PatientColumns(), twoDrugs),
                    .type = host::OpzioniRicetta::paperForm,
                    .print = host::OpzioniRicetta::printedByHost})
                  .Xml() == Golden("farmaci-rur"));
        const auto tests = With(With(PatientColumns(), oneTest), {{"MotivoRicetta", question}});
        CHECK(Fill({.kind = kindTests,
                    .columns = tests,
                    .exemptions = {.validUntil = {}, .sissCode = "E01L", .invalidity = false},
                    .print = host::oreNessuna})
                  .Xml() == Golden("accertamenti-elettronica"));
        CHECK(Fill({.kind = kindTests,
                    .columns = tests,
                    .type = host::OpzioniRicetta::paperForm,
                    .print = host::OpzioniRicetta::printedBySiss})
                  .Xml() == Golden("accertamenti-rur"));
    }

    TEST_CASE("exemption groups and validity")
    {
        struct Group
        {
            const char* group;
            Value validUntil;
            const char* flagAltreEsenzioni;
            const char* flagPatologia;
        };
        const Value later = *host::Date::FromCalendar(2030, 1, 1);
        const Value none = *host::Date::FromCalendar(1900, 1, 1);
        const Group groups[] = {{"R", {}, "S", ""},   {"Z", later, "S", ""}, {"P", later, "", "S"}, {"r", {}, "", ""},
                                {"", later, "S", ""}, {"", {}, "", ""},      {"", none, "", ""}};
        for (const auto& row : groups)
        {
            CAPTURE(row.group);
            const auto document =
                Fill({.columns = With(PatientColumns(), {{"PS_GruppoEsenzione", row.group}}),
                      .exemptions = {.validUntil = row.validUntil, .sissCode = "", .invalidity = false}});
            const auto data = Prescription(document).Select("datiSensibiliPrescrizione");
            CHECK(data.Text("flagAltreEsenzioni") == row.flagAltreEsenzioni);
            CHECK(data.Text("flagPatologia") == row.flagPatologia);
            CHECK(data.Text("flagEsenzionePatologia") == "N");
        }
    }

    TEST_CASE("exemption types, invalidity and the code that is sent")
    {
        const auto send = [](std::int32_t kind, const Columns& more, const Exemptions& exemptions)
        {
            return Prescription(Fill({.kind = kind, .columns = With(PatientColumns(), more), .exemptions = exemptions}))
                .Select("datiSensibiliPrescrizione");
        };
        struct Type
        {
            std::int32_t kind;
            std::int32_t type;
            const char* flag;
        };
        for (const auto& row : {Type{kindDrugs, 3, "A"}, Type{kindDrugs, 7, "R"}, Type{kindDrugs, 6, "N"},
                                Type{kindTests, 3, "S"}, Type{kindTests, 6, "S"}, Type{kindTests, 1, "N"}})
        {
            CAPTURE(row.type);
            const auto data = send(row.kind, {{"IDTipoEsenzione", row.type}}, {});
            CHECK(data.Text("flagEsenzionePatologia") == row.flag);
            CHECK(data.Text("flagAltreEsenzioni") == (std::string(row.flag) == "N" ? "" : "S"));
        }
        CHECK(send(kindDrugs, {}, {.validUntil = {}, .sissCode = "", .invalidity = true}).Text("flagAltreEsenzioni") ==
              "S");
        CHECK(send(kindTests, {}, {.validUntil = {}, .sissCode = "", .invalidity = true}).Text("flagAltreEsenzioni") ==
              "");
        const Columns local = {{"PS_CodiceIdentificativo", "048"}};
        CHECK(send(kindDrugs, local, {.validUntil = {}, .sissCode = "048S", .invalidity = false})
                  .Text("codiceEsenzione") == "048S");
        CHECK(send(kindDrugs, local, {}).Text("codiceEsenzione") == "048");
        const auto income = send(kindDrugs, {{"PS_CodiceIdentificativo", "%"}, {"NumeroEsenzione", "AUT-77"}},
                                 {.validUntil = {}, .sissCode = "E02", .invalidity = false});
        CHECK(income.Text("codiceEsenzione") == "");
        CHECK(income.Text("progrAutocertReddito") == "AUT-77");
    }

    TEST_CASE("an address without its comma ends the writing")
    {
        CHECK_THROWS_AS(Fill({.columns = With(PatientColumns(), {{"PAZ_Indirizzo", "Via Roma 12"}})}), host::Fault);
    }
}
