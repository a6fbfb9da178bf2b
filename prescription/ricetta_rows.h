// The prescriptions in the host's table RicettaSSN, as the closing of a session stores them.
#pragma once

#include "host/prescriptions.h"
#include "prescription/journal.h"
#include "prescription/sent_prescription.h"
#include "service/provider_context.h"

#include <memory>
#include <string>
#include <string_view>

namespace vellumo::prescription
{

// Why a prescription was not stored; "": it was.
using Reason = std::string_view;
constexpr Reason noRow = "La ricetta non è nella tabella RicettaSSN.";
constexpr Reason refusedSave = "Il programma ha rifiutato il salvataggio.";

// Faults of the host go through.
class RicettaRows
{
public:
    explicit RicettaRows(const service::ProviderContext& context)
        : m_context(context)
        , m_journal(context)
    {
    }

    // Null when the host has no such row.
    [[nodiscard]] std::unique_ptr<host::Record> Find(const PrescriptionId& id) const;
    // "" also for what cannot be read: that must not keep the new ones from being stored.
    [[nodiscard]] static Codes CodesIn(const host::Record& row);

    [[nodiscard]] static Reason Save(host::Record& row);
    // Saves the row with the code `iup`. A code that the row had from another registration is known to SISS still: it
    // goes to the journal.
    [[nodiscard]] Reason SaveWithCode(host::Record& row, const SentPrescription& prescription,
                                      const std::string& iup) const;

private:
    const service::ProviderContext& m_context;
    Journal m_journal;
};

} // namespace vellumo::prescription
