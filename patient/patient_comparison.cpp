#include "patient/patient_comparison.h"

#include "environment/siss_date_time.h"

#include <cstdint>

namespace vellumo::patient
{
namespace
{

void AddLocalAsl(ui::NamedValues& values, std::int32_t idAsl, const service::ProviderContext& context)
{
    const auto asl = context.objects.CreateRecord(host::RecordKind::Asl, context.services);
    if (idAsl != 0 && asl->Load(idAsl))
    {
        values["CodiceAsl"] = asl->Get("NumeroASL");
        values["CodiceRegioneAsl"] = context.services.RequireUtils().SingleValue(
            "SELECT CodiceRegione FROM Norda..Regione WHERE IDRegione = {0}", {asl->Get("IDRegione")});
    }
}

std::vector<ui::ComparedExemption> LocalExemptions(std::int32_t idPaziente, const service::ProviderContext& context)
{
    std::vector<ui::ComparedExemption> exemptions;
    const auto rows = context.services.RequireUtils().OpenRecordset(
        "SELECT * FROM VwEsenzionePerPaziente WHERE IDPaziente = {0}", {idPaziente});
    for (; !rows->IsAtEnd(); rows->MoveNext())
    {
        exemptions.push_back({rows->Field("IDEsenzione").ToInteger(),
                              rows->Field("CodiceIdentificativoEsenzione").ToText(),
                              rows->Field("Esenzione").ToText()});
    }
    return exemptions;
}

// The one that an update would overwrite.
ui::ComparedAddress LocalAddress(std::int32_t idPaziente, host::ResidenceKind kind,
                                 const service::ProviderContext& context)
{
    host::Utils& utils = context.services.RequireUtils();
    ui::ComparedAddress address;
    std::int32_t town = 0;
    { // while these rows are open, the connection may not take another statement
        const auto rows = utils.OpenRecordset("SELECT Indirizzo, Cap, IDComune FROM Residenza WHERE IDPaziente = {0} "
                                              "AND IDTipoResidenza = {1}",
                                              {idPaziente, static_cast<std::int32_t>(kind)});
        if (rows->IsAtEnd())
        {
            return address;
        }
        address.indirizzo = rows->Field("Indirizzo").ToText();
        address.cap = rows->Field("Cap").ToText();
        town = rows->Field("IDComune").ToInteger();
    }
    address.comune = utils.SingleValue("SELECT Comune FROM Norda..Comune WHERE IDComune = {0}", {town}).ToText();
    return address;
}

} // namespace

ui::ComparedPatient LocalSide(const host::Record& patient, const PatientMatch& match,
                              const service::ProviderContext& context)
{
    ui::NamedValues values;
    for (const auto* column :
         {"CodiceFiscale", "Cognome", "Nome", "Sesso", "NumTesseraSanitaria", "NumAssistito", "Revocato"})
    {
        values[column] = patient.Get(column);
    }
    values["DataNascita"] = environment::StoredDate(patient.Get("DataNascita"));
    values["ComuneNascita"] = context.services.RequireUtils().SingleValue(
        "SELECT Comune FROM Norda..Comune WHERE IDComune = {0}", {patient.Get("IDComuneNascita").ToInteger()});
    AddLocalAsl(values, patient.Get("IDASL").ToInteger(), context);
    return {.values = std::move(values),
            .exemptions = LocalExemptions(patient.Id(), context),
            .residence = LocalAddress(patient.Id(), host::ResidenceKind::Residence, context),
            .domicile = LocalAddress(patient.Id(), host::ResidenceKind::Domicile, context),
            .foundByCard = match.byCard};
}

ui::ComparedPatient SissSide(const Citizen& citizen)
{
    const Person& person = citizen.person;
    ui::ComparedPatient side;
    side.values = {{"CodiceFiscale", person.codiceFiscale},
                   {"Cognome", person.cognome},
                   {"Nome", person.nome},
                   {"Sesso", person.sesso},
                   {"DataNascita", person.dataNascita},
                   {"ComuneNascita", person.comuneNascita},
                   {"NumTesseraSanitaria", person.codiceSanitario},
                   {"NumAssistito", person.codiceSanitario}};
    if (citizen.revoked)
    {
        side.values["Revocato"] = std::int32_t{*citizen.revoked ? 1 : 0};
    }
    if (!citizen.asl.sigla.empty())
    {
        side.values["CodiceRegioneAsl"] = citizen.asl.RegionCode();
        side.values["CodiceAsl"] = citizen.asl.Number();
    }
    for (const auto& exemption : citizen.exemptions)
    {
        side.exemptions.push_back(
            {exemption.IDEsenzione, exemption.Codice, exemption.Descrizione, exemption.LocaleMancante});
    }
    for (const Address& address : citizen.addresses)
    {
        auto& shown = address.kind == host::ResidenceKind::Residence ? side.residence : side.domicile;
        shown = {address.StreetAndNumber(), address.cap, address.comune};
    }
    return side;
}

} // namespace vellumo::patient
