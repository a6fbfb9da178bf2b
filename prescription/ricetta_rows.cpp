#include "prescription/ricetta_rows.h"

#include "host/fault.h"

namespace vellumo::prescription
{
namespace
{

// "" also for one that cannot be read: that must not keep the new one from being stored.
std::string CodeIn(const host::Record& row)
{
    auto code = host::Trap(std::string(), [&] { return row.Get("CodiceIUP").ToText(); });
    code.erase(code.find_last_not_of(' ') + 1); // a column of fixed width pads
    return code;
}

} // namespace

std::unique_ptr<host::Record> RicettaRows::Find(const SentPrescription& prescription) const
{
    return m_context.prescriptions.CreatePrescriptionData(prescription.kind, m_context.services)
        ->Find(prescription.record->Key());
}

Reason RicettaRows::Save(host::Record& row)
{
    return row.Save() ? Reason() : refusedSave;
}

Reason RicettaRows::SaveWithCode(host::Record& row, const SentPrescription& prescription, const std::string& iup) const
{
    const std::string old = CodeIn(row);
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
