#include "patient/patient_writer.h"

#include "environment/siss_date_time.h"
#include "host/fault.h"

namespace vellumo::patient
{
namespace
{

host::Value Convert(const std::string& text, Conversion conversion)
{
    return conversion == Conversion::Date ? host::Value::DateOrNull(environment::ConvertSissDateTime(text))
                                          : host::Value(text);
}

} // namespace

std::int32_t PatientWriter::FindPatient(const xml::Node& citizen) const
{
    host::Utils& utils = m_context.services.RequireUtils();
    const auto find = [&](const char* sql, const std::string& key)
    { return key.empty() ? 0 : utils.SingleValue(sql, {key}).ToInteger(); };
    const auto byFiscalCode =
        find("SELECT IDPaziente FROM Paziente WHERE CodiceFiscale = {0}", citizen.Text(m_layout.fiscalCode));
    return byFiscalCode != 0 ? byFiscalCode
                             : find("SELECT IDPaziente FROM Paziente WHERE NumTesseraSanitaria = {0}",
                                    citizen.Text(m_layout.healthCard));
}

void PatientWriter::Fill(const xml::Node& citizen, host::Record& patient) const
{
    for (const auto& field : m_layout.personalData)
    {
        patient.Set(field.column, Convert(citizen.Text(field.source), field.conversion));
    }
    patient.Set("IDComuneNascita", m_references.TownOf(citizen.Text(m_layout.birthTown)));
    if (const auto sigla = citizen.Text(m_layout.asl); !sigla.empty())
    {
        if (const auto idAsl = m_references.AslOf(sigla, citizen.Text(m_layout.aslDescription)); idAsl != 0)
        {
            patient.Set("IDASL", idAsl);
        }
    }
    patient.Set("CCELastUpdated", m_context.clock.Now());
}

void PatientWriter::Save(host::Record& patient)
{
    if (!patient.Save())
    {
        throw host::Fault("Impossibile salvare l'anagrafica del paziente.");
    }
    if (patient.Id() <= 0)
    {
        throw host::Fault("Il programma non ha dato un identificativo al paziente.");
    }
}

void PatientWriter::WriteAddresses(const xml::Node& citizen, std::int32_t idPaziente) const
{
    host::Utils& utils = m_context.services.RequireUtils();
    for (const auto& mapping : m_layout.addresses)
    {
        std::string address = citizen.Text(mapping.address);
        const std::string number = citizen.Text(mapping.number);
        if (!address.empty() && !number.empty())
        {
            address += ", " + number;
        }
        const auto key = utils.FindKey("Residenza", "IDResidenza", mapping.keyFilter, {idPaziente});
        utils.WriteRow("Residenza", "IDResidenza", key,
                       {{"IDPaziente", idPaziente},
                        {"IDTipoResidenza", mapping.kind},
                        {"Indirizzo", address},
                        {"Cap", citizen.Text(mapping.postcode)},
                        {"IDComune", m_references.TownOf(citizen.Text(mapping.town))}});
    }
}

} // namespace vellumo::patient
