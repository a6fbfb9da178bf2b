#include "prescription/prescription_check.h"

#include "host/fault.h"
#include "host/prescriptions.h"

#include <string>

namespace vellumo::prescription
{

bool PrescriptionCheck::Verify(const host::Value& idRicetta, const std::optional<host::Value>& numRicetta,
                               std::int32_t kind) const
{
    const std::int32_t form = idRicetta.ToInteger();
    if (form == 0 || (kind != host::kindDrugs && kind != host::kindTests))
    {
        return true;
    }
    std::string sql =
        std::string("SELECT * FROM RicettaSSN ") + "WHERE Annullata = 0" + " AND IDRicetta = " + std::to_string(form);
    if (numRicetta)
    {
        sql += " AND NumRicetta = " + std::to_string(numRicetta->ToInteger());
    }
    sql += kind == host::kindDrugs ? " AND IDMenuItem = 80 " : " AND IDMenuItem = 79 "; // the host's menus
    sql += " AND (NOT CodiceIUP IS NULL AND LEN(CodiceIUP) > 0)";
    return m_context.services.RequireConnection().Open(sql)->IsAtEnd();
}

bool PrescriptionCheck::Cancel(const host::Value& idRicetta, const host::Value& numRicetta,
                               std::int32_t value) const noexcept
{
    const bool cancelled = host::Trap(false,
                                      [&] {
                                          return MarkCancelled({idRicetta.ToInteger(), numRicetta.ToInteger()}, value);
                                      });
    m_context.log.End();
    return cancelled;
}

bool PrescriptionCheck::MarkCancelled(const host::PrescriptionKey& key, std::int32_t value) const
{
    const auto data = m_context.prescriptions.CreatePrescriptionData(value, m_context.services);
    const auto row = data->Find(key);
    if (!row)
    {
        return false;
    }
    row->Set("Annullata", true);
    return row->Save();
}

} // namespace vellumo::prescription
