#include "patient/patient_update.h"

#include "host/connection.h"
#include "host/fault.h"
#include "patient/patient_comparison.h"
#include "patient/patient_writer.h"
#include "ui/form_paziente_changes.h"

#include <string>
#include <vector>

namespace vellumo::patient
{
namespace
{

constexpr std::int32_t freshDays = 31;

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
    Citizen citizen = ReadIdentified(response.Data);
    m_exemptions.Complete(citizen.exemptions);
    if (!m_exemptions.Assign(citizen))
    {
        return 0;
    }

    ReferenceData references(m_context);
    const PatientWriter writer(m_context, references);
    const auto newRecord = [&]
    { return m_context.objects.CreateRecord(host::RecordKind::Patient, m_context.services); };
    auto patient = newRecord();
    std::int32_t mask = ui::update::byDefault;
    const PatientMatch match = writer.FindPatient(citizen.person);
    const std::int32_t matched = match.id;
    if (matched == 0)
    {
        patient->StartNew();
    }
    else
    {
        if (!patient->Load(matched))
        {
            m_context.journal.Write("Il paziente " + std::to_string(matched) +
                                    ", che il SISS ha identificato, non può essere letto: non è stato aggiornato.");
            return 0;
        }
        if (!force && !IsDue(*patient, askIfRecent))
        {
            return matched;
        }
        ui::FormPazienteChanges window(LocalSide(*patient, match, m_context), SissSide(citizen), mask,
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
    return Store(citizen, *patient, mask, writer);
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

std::int32_t PatientUpdate::Store(const Citizen& citizen, host::Record& patient, std::int32_t mask,
                                  const PatientWriter& writer) const
{
    host::Transaction transaction(m_context.services.RequireConnection());
    if (HasBit(mask, ui::update::personalData))
    {
        writer.Fill(citizen, patient);
        PatientWriter::Save(patient);
    }
    const std::int32_t idPaziente = patient.Id();
    std::vector<ui::SissExemption> lost;
    if (HasBit(mask, ui::update::exemptions))
    {
        lost = m_exemptions.Store(citizen.exemptions, idPaziente, HasBit(mask, ui::update::deleteExemptions));
    }
    if (HasBit(mask, ui::update::addresses))
    {
        writer.WriteAddresses(citizen, idPaziente);
    }
    transaction.Commit();
    for (const ui::SissExemption& exemption : lost)
    {
        m_context.journal.WriteToCheck("Paziente " + std::to_string(idPaziente) + ": esenzione SISS " +
                                       exemption.Codice + " non salvata, l'esenzione locale " +
                                       std::to_string(exemption.IDEsenzione) +
                                       " a cui è assegnata non esiste più. Identificare di nuovo il paziente e "
                                       "assegnarne un'altra.");
    }
    return idPaziente;
}

} // namespace vellumo::patient
