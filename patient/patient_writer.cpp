#include "patient/patient_writer.h"

#include "environment/ansi_text.h"
#include "host/fault.h"
#include "service/siss_date_time.h"

#include <array>

namespace vellumo::patient
{
namespace
{

enum class Conversion
{
    Text,
    Date
};

struct FieldMapping
{
    const char* column; // of Paziente
    const char* source; // below the reply's data node
    Conversion conversion;
};

constexpr std::array<FieldMapping, 11> personalData = {{
    {"CodiceFiscale", "datiCittadino/codiceFiscaleCittadino", Conversion::Text},
    {"Cognome", "datiCittadino/cognomeCittadino", Conversion::Text},
    {"Nome", "datiCittadino/nomeCittadino", Conversion::Text},
    {"Sesso", "datiCittadino/sessoCittadino", Conversion::Text},
    {"DataNascita", "datiCittadino/dataNascitaCittadino", Conversion::Date},
    {"NumTesseraSanitaria", "datiCittadino/codiceSanitarioCittadino", Conversion::Text},
    {"NumAssistito", "datiCittadino/codiceSanitarioCittadino", Conversion::Text},
    {"DataSceltaASL", "datiCittadino/dataDecorrenzaIscrizione", Conversion::Date},
    {"DataScadenza", "datiCittadino/dataScadenzaIscrizione", Conversion::Date},
    {"DataScelta", "datiMedico/dataInizioScelta", Conversion::Date},
    {"DataSospensione", "datiMedico/dataFineScelta", Conversion::Date},
}};

struct AddressMapping
{
    std::int32_t kind; // IDTipoResidenza
    const char* keyFilter;
    const char* address;
    const char* number;
    const char* postcode;
    const char* town;
};

constexpr std::array<AddressMapping, 2> addresses = {{
    {1, "IDPaziente = {0} AND IDTipoResidenza = 1", "datiCittadino/indirizzoResidenzaCittadino",
     "datiCittadino/civicoResidenzaCittadino", "datiCittadino/capResidenzaCittadino",
     "datiCittadino/comuneResidenzaCittadino"},
    {3, "IDPaziente = {0} AND IDTipoResidenza = 3", "datiCittadino/indirizzoDomicilioCittadino",
     "datiCittadino/civicoDomicilioCittadino", "datiCittadino/capDomicilioCittadino",
     "datiCittadino/comuneDomicilioCittadino"},
}};

constexpr std::size_t aslCodePart = 3;

host::Value Convert(const std::string& text, Conversion conversion)
{
    return conversion == Conversion::Date ? host::Value::DateOrNull(service::ConvertSissDateTime(text))
                                          : host::Value(text);
}

void Save(host::Record& record, const char* what)
{
    if (!record.Save())
    {
        throw host::Fault(std::string("Impossibile salvare ") + what + ".");
    }
}

} // namespace

std::string RegionCodeOf(std::string_view siglaAsl)
{
    return environment::FirstCharacters(siglaAsl, aslCodePart);
}

std::string AslNumberOf(std::string_view siglaAsl)
{
    return environment::LastCharacters(siglaAsl, aslCodePart);
}

void PatientWriter::WritePersonalData(const xml::Node& data, host::Record& patient) const
{
    for (const auto& field : personalData)
    {
        patient.Set(field.column, Convert(data.Text(field.source), field.conversion));
    }
    const std::string state = data.Text("datiCittadino/statoAssistito");
    if (state == "ATTIVO" || state == "NON-ATTIVO")
    { // any other leaves the patient as he was
        patient.Set("Revocato", std::int32_t{state == "ATTIVO" ? 0 : 1});
    }
    patient.Set("IDComuneNascita", TownOf(data.Text("datiCittadino/comuneNascitaCittadino")));
    if (const auto sigla = data.Text("datiCittadino/siglaAslAppartenenza"); !sigla.empty())
    {
        if (const auto idAsl = WriteAsl(sigla, data.Text("datiCittadino/descrizioneAslAppartenenza")); idAsl != 0)
        {
            patient.Set("IDASL", idAsl);
        }
    }
    patient.Set("CCELastUpdated", m_context.clock.Now());
    Save(patient, "l'anagrafica del paziente");
}

std::int32_t PatientWriter::WriteAsl(const std::string& sigla, const std::string& description) const
{
    host::Utils& utils = m_context.services.RequireUtils();
    const std::string number = AslNumberOf(sigla);
    const auto region =
        utils.SingleValue("SELECT IDRegione FROM Norda..Regione WHERE CodiceRegione = {0}", {RegionCodeOf(sigla)})
            .ToInteger();
    if (region == 0)
    {
        return 0;
    }
    const auto known =
        utils.SingleValue("SELECT IDAsl FROM Norda..Asl WHERE NumeroASL = {0} AND IDRegione = {1}", {number, region})
            .ToInteger();
    const auto asl = m_context.objects.CreateRecord(host::RecordKind::Asl, m_context.services);
    if (known == 0)
    {
        asl->StartNew();
    }
    else if (!asl->Load(known))
    {
        throw host::Fault("Impossibile leggere l'ASL del paziente.");
    }
    asl->Set("ASL", description);
    asl->Set("NumeroASL", number);
    asl->Set("IDRegione", region);
    Save(*asl, "l'ASL del paziente");
    return asl->Id();
}

void PatientWriter::WriteAddresses(const xml::Node& data, std::int32_t idPaziente) const
{
    host::Utils& utils = m_context.services.RequireUtils();
    for (const auto& mapping : addresses)
    {
        std::string address = data.Text(mapping.address);
        const std::string number = data.Text(mapping.number);
        if (!address.empty() && !number.empty())
        {
            address += ", " + number;
        }
        const auto key = utils.FindKey("Residenza", "IDResidenza", mapping.keyFilter, {idPaziente});
        utils.WriteRow("Residenza", "IDResidenza", key,
                       {{"IDPaziente", idPaziente},
                        {"IDTipoResidenza", mapping.kind},
                        {"Indirizzo", address},
                        {"Cap", data.Text(mapping.postcode)},
                        {"IDComune", TownOf(data.Text(mapping.town))}});
    }
}

std::int32_t PatientWriter::TownOf(const std::string& name) const
{
    return m_context.services.RequireUtils()
        .SingleValue("SELECT IDComune FROM Norda..Comune WHERE Comune = {0}", {name})
        .ToInteger();
}

} // namespace vellumo::patient
