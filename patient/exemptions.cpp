#include "patient/exemptions.h"

#include "environment/siss_date_time.h"
#include "host/fault.h"
#include "ui/form_esenzioni.h"

#include <optional>
#include <string>
#include <unordered_map>

namespace vellumo::patient
{
namespace
{

using Descriptions = std::unordered_map<std::string, std::string>;

// SISS code to description; of a code that stands twice, the first row.
Descriptions ReadDescriptions(environment::SISSEnvironment& environment)
{
    return host::Trap(Descriptions(),
                      [&]
                      {
                          Descriptions descriptions;
                          const auto table = environment.GetImportTable(environment.ImportIndexs().Item("ESENZIONI"));
                          const auto code = table.Columns().Item("CD_APPLICATIVO").Index;
                          const auto description = table.Columns().Item("DS_ESENZIONE_SISS").Index;
                          for (std::int32_t position = 1; position <= table.RowCount(); ++position)
                          {
                              const auto row = table.Item(position);
                              descriptions.emplace(row.Field(code), row.Field(description));
                          }
                          return descriptions;
                      });
}

} // namespace

void Exemptions::Complete(SissExemptions& exemptions) const
{
    if (exemptions.empty())
    {
        return;
    }
    const auto descriptions = ReadDescriptions(m_context.environment);
    for (ui::SissExemption& exemption : exemptions)
    {
        if (const auto known = descriptions.find(exemption.Codice); known != descriptions.end())
        {
            exemption.Descrizione = known->second;
        }
        exemption.IDEsenzione = LocalExemptionOf(exemption.Codice);
    }
}

std::int32_t Exemptions::LocalExemptionOf(const std::string& codice) const
{
    return m_context.services.RequireUtils()
        .SingleValue("SELECT ISNULL(IDEsenzione, 0) FROM Norda..SISS_Esenzione WHERE Codice = {0}", {codice})
        .ToInteger();
}

bool Exemptions::Assign(Citizen& citizen) const
{
    const Person& person = citizen.person;
    const ui::Whom whom = {person.cognome, person.nome, person.sesso, person.dataNascita, person.codiceFiscale};
    ui::FormEsenzioni window(whom, citizen.exemptions, m_context.services.RequireConnection(), m_context.desktop);
    m_context.desktop.ShowModal(window);
    return window.Result() == ui::FormEsenzioni::Decision::Confirmed;
}

SissExemptions Exemptions::Store(const SissExemptions& exemptions, std::int32_t idPaziente, bool deleteFirst) const
{
    if (deleteFirst)
    {
        m_context.services.RequireUtils().Execute(
            std::string("DELETE FROM EsenzionePerPaziente ") + "WHERE IDPaziente = {0}", {idPaziente});
    }
    SissExemptions lost;
    for (const auto& exemption : exemptions)
    {
        if (!Store(exemption, idPaziente))
        {
            lost.push_back(exemption);
        }
    }
    return lost;
}

bool Exemptions::Store(const ui::SissExemption& exemption, std::int32_t idPaziente) const
{
    host::Utils& utils = m_context.services.RequireUtils();
    const auto local = [&]() -> std::optional<host::Value>
    {
        const auto rows =
            utils.OpenRecordset("SELECT * FROM VwPartecipazioneSpesa WHERE IDEsenzione = {0}", {exemption.IDEsenzione});
        return rows->IsAtEnd() ? std::nullopt : std::optional(rows->Field("Esenzione"));
    }();
    if (!local)
    {
        return false;
    }

    const auto pairing = utils.FindKey("Norda..SISS_Esenzione", "IDSISSEsenzione", "Codice = {0}", {exemption.Codice});
    utils.WriteRow("Norda..SISS_Esenzione", "IDSISSEsenzione", pairing,
                   {{"Codice", exemption.Codice}, {"IDEsenzione", exemption.IDEsenzione}});

    const auto key = utils.SingleValue("SELECT IDEsenzionePerPaziente FROM EsenzionePerPaziente "
                                       "WHERE IDEsenzione = {0} AND IDPaziente = {1}",
                                       {exemption.IDEsenzione, idPaziente});
    utils.WriteRow("EsenzionePerPaziente", "IDEsenzionePerPaziente", key,
                   {{"IDPaziente", idPaziente},
                    {"IDEsenzione", exemption.IDEsenzione},
                    {"Esenzione", *local},
                    {"DataEsenzione", host::Value::DateOrNull(exemption.DataEsenzione)},
                    {"Scadenza", host::Value::DateOrNull(exemption.Scadenza)}});
    return true;
}

} // namespace vellumo::patient
