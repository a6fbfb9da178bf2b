#include "patient/patient_update.h"

#include "host/connection.h"
#include "host/fault.h"
#include "patient/patient_comparison.h"
#include "patient/patient_writer.h"
#include "ui/form_paziente_changes.h"

#include <array>
#include <string>

namespace vellumo::patient
{
namespace
{

constexpr std::int32_t freshDays = 31;

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

constexpr std::array<AddressMapping, 2> addresses = {{
    {1, residenceFilter, "datiCittadino/indirizzoResidenzaCittadino", "datiCittadino/civicoResidenzaCittadino",
     "datiCittadino/capResidenzaCittadino", "datiCittadino/comuneResidenzaCittadino"},
    {3, domicileFilter, "datiCittadino/indirizzoDomicilioCittadino", "datiCittadino/civicoDomicilioCittadino",
     "datiCittadino/capDomicilioCittadino", "datiCittadino/comuneDomicilioCittadino"},
}};

constexpr CitizenLayout layout = {personalData,
                                  addresses,
                                  "datiCittadino/codiceFiscaleCittadino",
                                  "datiCittadino/codiceSanitarioCittadino",
                                  "datiCittadino/comuneNascitaCittadino",
                                  "datiCittadino/siglaAslAppartenenza",
                                  "datiCittadino/descrizioneAslAppartenenza"};

// "ATTIVO" and "NON-ATTIVO", exactly; any other state leaves the patient as he was.
void WriteState(const xml::Node& data, host::Record& patient)
{
    const std::string state = data.Text("datiCittadino/statoAssistito");
    if (state == "ATTIVO" || state == "NON-ATTIVO")
    {
        patient.Set("Revocato", std::int32_t{state == "ATTIVO" ? 0 : 1});
    }
}

bool HasBit(std::int32_t mask, std::int32_t bit)
{
    return (mask & bit) != 0;
}

} // namespace

PatientUpdate::PatientUpdate(const service::ProviderContext& context)
    : m_context(context)
    , m_exemptions(context)
{
}

std::int32_t PatientUpdate::UpdatePatientFromCitizen(const service::ServiceResponse& response, bool askIfRecent,
                                                     bool force) const
{
    const xml::Node data = response.Data;
    SissExemptions exemptions = m_exemptions.Collect(data);
    if (!m_exemptions.Assign(exemptions))
    {
        return 0;
    }

    ReferenceData references(m_context);
    const PatientWriter writer(m_context, layout, references);
    const auto newRecord = [&]
    { return m_context.objects.CreateRecord(host::RecordKind::Patient, m_context.services); };
    auto patient = newRecord();
    std::int32_t mask = ui::update::byDefault;
    const std::int32_t matched = writer.FindPatient(data);
    if (matched == 0)
    {
        patient->StartNew();
    }
    else
    {
        if (!patient->Load(matched))
        {
            return 0;
        }
        if (!force && !IsDue(*patient, askIfRecent))
        {
            return matched;
        }
        ui::FormPazienteChanges window(LocalValues(*patient, m_context), SissValues(data, exemptions), mask,
                                       m_context.desktop);
        m_context.desktop.ShowModal(window);
        if (window.Result() != ui::FormPazienteChanges::Decision::Confirmed)
        {
            return 0;
        }
        mask = window.Changes();
        if (HasBit(mask, ui::update::asNewPatient))
        {
            patient = newRecord();
            patient->StartNew();
        }
    }
    return Store(data, exemptions, *patient, mask, writer);
}

bool PatientUpdate::IsDue(const host::Record& patient, bool askIfRecent) const
{
    const host::Date updated = patient.Get("CCELastUpdated").ToDate();
    if (updated.IsZero())
    {
        return true;
    }
    const std::int32_t days = m_context.clock.Now().DayNumber() - updated.DayNumber();
    if (days < freshDays)
    {
        return false;
    }
    return !askIfRecent ||
           m_context.desktop.Show({"Il paziente non viene aggiornato da " + std::to_string(days) +
                                       " giorni.\r\nSi vuole aggiornare adesso?",
                                   "Attenzione!!", ui::Icon::Exclamation, ui::Buttons::YesNo, 2}) == ui::Answer::Yes;
}

std::int32_t PatientUpdate::Store(const xml::Node& data, const SissExemptions& exemptions, host::Record& patient,
                                  std::int32_t mask, const PatientWriter& writer) const
{
    host::Transaction transaction(m_context.services.RequireConnection());
    if (HasBit(mask, ui::update::personalData))
    {
        writer.Fill(data, patient);
        WriteState(data, patient);
        PatientWriter::Save(patient);
    }
    const std::int32_t idPaziente = patient.Id();
    if (HasBit(mask, ui::update::exemptions))
    {
        m_exemptions.Store(exemptions, idPaziente, HasBit(mask, ui::update::deleteExemptions));
    }
    if (HasBit(mask, ui::update::addresses))
    {
        writer.WriteAddresses(data, idPaziente);
    }
    transaction.Commit();
    return idPaziente;
}

} // namespace vellumo::patient
