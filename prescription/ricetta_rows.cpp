#include "prescription/ricetta_rows.h"

#include "host/fault.h"

namespace vellumo::prescription
{

std::unique_ptr<host::Record> RicettaRows::Find(const PrescriptionId& id) const
{
    return m_context.prescriptions.CreatePrescriptionData(id.kind, m_context.services)->Find(id.key);
}

Codes RicettaRows::CodesIn(const host::Record& row)
{
    const auto read = [&](std::string_view column)
    { return host::Trap(std::string(), [&] { return row.Get(column).ToText(); }); };
    return {read("CodiceIUP"), read("NumeroProtocollo")};
}

Reason RicettaRows::Save(host::Record& row)
{
    return row.Save() ? Reason() : refusedSave;
}

Reason RicettaRows::SaveWithCode(host::Record& row, const SentPrescription& prescription, const std::string& iup) const
{
    const std::string old = CodesIn(row).iup;
    const bool replaces = !old.empty() && old != iup && old != prescription.GivenIup();
    row.Set("CodiceIUP", iup);
    OpenCode openOld = replaces ? m_journal.Keep(prescription.Id().Name(), {old, ""}, m_journal.User()) : nullptr;
    const auto tellReplaced = [&]
    {
        if (replaces)
        {
            m_journal.Replaced(prescription.Id(), old, openOld, iup);
        }
    };
    Reason reason;
    try
    {
        reason = Save(row);
    }
    catch (const std::exception&)
    {
        tellReplaced(); // the host may have saved all the same
        throw;
    }
    if (reason.empty())
    {
        tellReplaced();
    }
    else
    {
        Settle(openOld); // still there
    }
    return reason;
}

} // namespace vellumo::prescription
