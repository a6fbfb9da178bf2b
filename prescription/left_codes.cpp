#include "prescription/left_codes.h"

#include "host/fault.h"
#include "prescription/journal.h"
#include "prescription/ricetta_rows.h"

namespace vellumo::prescription
{

bool LeftCodes::Tell(const host::LeftCode& code) const
{
    const auto stored = host::Trap(Stored::No, [&] { return Find(code); });
    if (stored == Stored::CodeAndProtocol)
    {
        return true;
    }
    const std::string ending =
        stored == Stored::Code ? "salvato, ma senza conferma prima della chiusura del programma. Verificare sul SISS."
                               : "non salvato prima della chiusura del programma.";
    return m_context.journal.WriteToCheck(code.subject + ": " + code.code + ", ricevuto dal SISS il " + code.time +
                                          " sulla postazione " + code.machine + " (utente " +
                                          std::to_string(code.user) + "), " + ending);
}

LeftCodes::Stored LeftCodes::Find(const host::LeftCode& code) const
{
    const auto id = PrescriptionId::FromName(code.subject);
    const auto row = id ? RicettaRows(m_context).Find(*id) : nullptr;
    const Codes stored = row ? RicettaRows::CodesIn(*row) : Codes();
    const Codes left = Codes::FromText(code.code);
    if (left.iup.empty() || stored.iup != left.iup)
    {
        return Stored::No;
    }
    const bool isConfirmed =
        !stored.protocollo.empty() && (left.protocollo.empty() || stored.protocollo == left.protocollo);
    return isConfirmed ? Stored::CodeAndProtocol : Stored::Code;
}

} // namespace vellumo::prescription
