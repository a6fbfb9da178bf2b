#include "patient/patient_comparison.h"

#include "patient/reference_data.h"
#include "service/siss_date_time.h"

#include <cstdint>
#include <string>

namespace vellumo::patient
{
namespace
{

void AddExemption(ui::NamedValues& values, std::int32_t number, const host::Value& id, const host::Value& code,
                  const host::Value& description)
{
    const std::string suffix = "_" + std::to_string(number);
    values["IDEsenzione" + suffix] = id;
    values["CodiceEsenzione" + suffix] = code;
    values["DescrizioneEsenzione" + suffix] = description;
}

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

void AddLocalExemptions(ui::NamedValues& values, std::int32_t idPaziente, const service::ProviderContext& context)
{
    const auto rows = context.services.RequireUtils().OpenRecordset(
        "SELECT * FROM VwEsenzionePerPaziente WHERE IDPaziente = {0}", {idPaziente});
    std::int32_t count = 0;
    for (; !rows->IsAtEnd(); rows->MoveNext())
    {
        AddExemption(values, ++count, rows->Field("IDEsenzione"), rows->Field("CodiceIdentificativoEsenzione"),
                     rows->Field("Esenzione"));
    }
    values["EsenzioneCount"] = count;
}

} // namespace

ui::NamedValues LocalValues(const host::Record& patient, const service::ProviderContext& context)
{
    ui::NamedValues values;
    for (const auto* column :
         {"CodiceFiscale", "Cognome", "Nome", "Sesso", "NumTesseraSanitaria", "NumAssistito", "Revocato"})
    {
        values[column] = patient.Get(column);
    }
    values["DataNascita"] = service::StoredDate(patient.Get("DataNascita"));
    values["ComuneNascita"] = context.services.RequireUtils().SingleValue(
        "SELECT Comune FROM Norda..Comune WHERE IDComune = {0}", {patient.Get("IDComuneNascita").ToInteger()});
    AddLocalAsl(values, patient.Get("IDASL").ToInteger(), context);
    AddLocalExemptions(values, patient.Id(), context);
    return values;
}

ui::NamedValues SissValues(const xml::Node& data, const SissExemptions& exemptions)
{
    const xml::Node citizen = data.Select("datiCittadino");
    ui::NamedValues values;
    values["CodiceFiscale"] = citizen.Text("codiceFiscaleCittadino");
    values["Cognome"] = citizen.Text("cognomeCittadino");
    values["Nome"] = citizen.Text("nomeCittadino");
    values["Sesso"] = citizen.Text("sessoCittadino");
    values["DataNascita"] = service::ConvertSissDateTime(citizen.Text("dataNascitaCittadino"));
    values["ComuneNascita"] = citizen.Text("comuneNascitaCittadino");
    values["NumTesseraSanitaria"] = values["NumAssistito"] = citizen.Text("codiceSanitarioCittadino");
    if (const auto state = citizen.Text("statoAssistito"); state == "ATTIVO" || state == "NON-ATTIVO")
    {
        values["Revocato"] = std::int32_t{state == "ATTIVO" ? 0 : 1};
    }
    if (const auto sigla = citizen.Text("siglaAslAppartenenza"); !sigla.empty())
    {
        values["CodiceRegioneAsl"] = RegionCodeOf(sigla);
        values["CodiceAsl"] = AslNumberOf(sigla);
    }
    std::int32_t count = 0;
    for (const auto& exemption : exemptions)
    {
        AddExemption(values, ++count, exemption.IDEsenzione, exemption.Codice, exemption.Descrizione);
    }
    values["EsenzioneCount"] = count;
    return values;
}

} // namespace vellumo::patient
