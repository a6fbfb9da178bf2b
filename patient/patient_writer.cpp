#include "patient/patient_writer.h"

#include "host/fault.h"

#include <array>
#include <string>

namespace vellumo::patient
{

PatientMatch PatientWriter::FindPatient(const Person& person) const
{
    host::Utils& utils = m_context.services.RequireUtils();
    const auto find = [&](const char* sql, const std::string& key)
    { return key.empty() ? 0 : utils.SingleValue(sql, {key}).ToInteger(); };
    const auto byFiscalCode = find("SELECT IDPaziente FROM Paziente WHERE CodiceFiscale = {0}", person.codiceFiscale);
    if (byFiscalCode != 0)
    {
        return {.id = byFiscalCode};
    }
    return {.id = find("SELECT IDPaziente FROM Paziente WHERE NumTesseraSanitaria = {0}", person.codiceSanitario),
            .byCard = true};
}

void PatientWriter::Fill(const Citizen& citizen, host::Record& patient) const
{
    const auto& [person, revoked, choice, asl, addresses, exemptions] = citizen;
    const std::array columns = {
        host::ColumnValue{"CodiceFiscale", person.codiceFiscale},
        host::ColumnValue{"Cognome", person.cognome},
        host::ColumnValue{"Nome", person.nome},
        host::ColumnValue{"Sesso", person.sesso},
        host::ColumnValue{"DataNascita", host::Value::DateOrNull(person.dataNascita)},
        host::ColumnValue{"NumTesseraSanitaria", person.codiceSanitario},
        host::ColumnValue{"NumAssistito", person.codiceSanitario},
        host::ColumnValue{"DataSceltaASL", host::Value::DateOrNull(asl.decorrenza)},
        host::ColumnValue{"DataScadenza", host::Value::DateOrNull(asl.scadenza)},
        host::ColumnValue{"DataScelta", host::Value::DateOrNull(choice.inizio)},
        host::ColumnValue{"DataSospensione", host::Value::DateOrNull(choice.fine)},
    };
    for (const auto& [column, value] : columns)
    {
        patient.Set(column, value);
    }
    patient.Set("IDComuneNascita", m_references.TownOf(person.comuneNascita));
    if (const auto idAsl = asl.sigla.empty() ? 0 : m_references.AslOf(asl); idAsl != 0)
    {
        patient.Set("IDASL", idAsl);
    }
    patient.Set("CCELastUpdated", m_context.clock.Now());
    if (revoked)
    {
        patient.Set("Revocato", std::int32_t{*revoked ? 1 : 0});
    }
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

void PatientWriter::WriteAddresses(const Citizen& citizen, std::int32_t idPaziente) const
{
    host::Utils& utils = m_context.services.RequireUtils();
    for (const Address& address : citizen.addresses)
    {
        const auto kind = static_cast<std::int32_t>(address.kind);
        const auto key = utils.FindKey("Residenza", "IDResidenza",
                                       "IDPaziente = {0} AND IDTipoResidenza = " + std::to_string(kind), {idPaziente});
        utils.WriteRow("Residenza", "IDResidenza", key,
                       {{"IDPaziente", idPaziente},
                        {"IDTipoResidenza", kind},
                        {"Indirizzo", address.StreetAndNumber()},
                        {"Cap", address.cap},
                        {"IDComune", m_references.TownOf(address.comune)}});
    }
}

} // namespace vellumo::patient
