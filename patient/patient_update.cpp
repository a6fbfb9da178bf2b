#include "patient/patient_update.h"

#include "host/connection.h"
#include "host/fault.h"
#include "patient/patient_comparison.h"
#include "ui/form_paziente_changes.h"

#include <string>

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
    , m_writer(context)
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

    const auto newRecord = [&]
    { return m_context.objects.CreateRecord(host::RecordKind::Patient, m_context.services); };
    auto patient = newRecord();
    std::int32_t mask = ui::update::byDefault;
    const std::int32_t matched = FindPatient(data);
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
        constexpr int confirmed = 1;
        ui::FormPazienteChanges window(LocalValues(*patient, m_context), SissValues(data, exemptions), mask,
                                       m_context.desktop);
        m_context.desktop.ShowModal(window);
        if (window.Result() != confirmed)
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
    return Store(data, exemptions, *patient, mask);
}

std::int32_t PatientUpdate::FindPatient(const xml::Node& data) const
{
    host::Utils& utils = m_context.services.RequireUtils();
    // An empty key matches nobody: a citizen without a card must not meet a patient without one.
    const auto find = [&](const char* sql, const std::string& key)
    { return key.empty() ? 0 : utils.SingleValue(sql, {key}).ToInteger(); };
    const auto byFiscalCode = find("SELECT IDPaziente FROM Paziente WHERE CodiceFiscale = {0}",
                                   data.Text("datiCittadino/codiceFiscaleCittadino"));
    return byFiscalCode != 0 ? byFiscalCode
                             : find("SELECT IDPaziente FROM Paziente WHERE NumTesseraSanitaria = {0}",
                                    data.Text("datiCittadino/codiceSanitarioCittadino"));
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
                                  std::int32_t mask) const
{
    host::Transaction transaction(m_context.services.RequireConnection());
    if (HasBit(mask, ui::update::personalData))
    {
        m_writer.WritePersonalData(data, patient);
    }
    const std::int32_t idPaziente = patient.Id();
    if (HasBit(mask, ui::update::exemptions))
    {
        m_exemptions.Store(exemptions, idPaziente, HasBit(mask, ui::update::deleteExemptions));
    }
    if (HasBit(mask, ui::update::addresses))
    {
        m_writer.WriteAddresses(data, idPaziente);
    }
    transaction.Commit();
    return idPaziente;
}

} // namespace vellumo::patient
