#include "prescription/session_closing.h"

#include "prescription/end_of_phase.h"
#include "prescription/journal.h"
#include "prescription/registration_review.h"

#include <algorithm>
#include <string>

namespace vellumo::prescription
{
namespace
{

bool IsPrintedBySiss(const host::PrescriptionSession& session)
{
    using host::OpzioniRicetta;
    const auto options = session.Options();
    return options && (options->TipoRicetta == OpzioniRicetta::electronic ||
                       (options->TipoRicetta == OpzioniRicetta::paperForm &&
                        options->ModalitaStampa == OpzioniRicetta::printedBySiss));
}

// Codes that the folder could not take at registration, and those of a session that is closed again.
void KeepCodes(std::vector<SentPrescription>& sent, const Journal& journal)
{
    const std::int32_t user = journal.User();
    for (auto& prescription : sent)
    {
        if (!prescription.response->OpenCode)
        {
            prescription.response->OpenCode =
                journal.Keep(prescription.Id().Name(), {prescription.GivenIup(), ""}, user);
        }
    }
}

// A prescription that was sent twice has one row, which shows the code of one of them.
bool HasOwnRow(const SentPrescription& prescription, const std::vector<SentPrescription>& sent)
{
    const std::string name = prescription.Id().Name();
    return std::ranges::count_if(sent, [&](const SentPrescription& other) { return other.Id().Name() == name; }) == 1;
}

void SettleUnconfirmed(std::vector<SentPrescription>& sent, const Journal& journal)
{
    for (auto& prescription : sent)
    {
        const auto iup = prescription.GivenIup();
        if (prescription.settled || iup.empty())
        {
            continue;
        }
        journal.NotConfirmed(prescription.Id(), iup, prescription.response->OpenCode);
        if (prescription.stored && HasOwnRow(prescription, sent))
        {
            Settle(prescription.response->OpenCode);
        }
    }
}

} // namespace

bool SessionClosing::Run(host::PrescriptionSession& session) const
{
    const bool prints = Close(session);
    m_context.log.End();
    return prints;
}

bool SessionClosing::Close(host::PrescriptionSession& session) const
{
    if (session.DaValidare())
    {
        m_context.desktop.Show({"Le prescrizioni sono pronte per essere validate dal medico responsabile.",
                                "Informazione", ui::Icon::Information, ui::Buttons::Ok});
        return false;
    }
    if (session.SenzaSISS())
    {
        return true;
    }
    const bool ended = ReviewAndEnd(session);
    return !IsPrintedBySiss(session) && ended;
}

bool SessionClosing::ReviewAndEnd(host::PrescriptionSession& session) const
{
    const Journal journal(m_context);
    std::vector<SentPrescription> sent; // whatever breaks off, the codes that were read are told
    bool ended = false;
    try
    {
        ReadSentPrescriptions(session, sent);
        KeepCodes(sent, journal);
        const auto review = RegistrationReview(m_context).Run(sent);
        if (review == ReviewOutcome::GivenUp)
        {
            return false;
        }
        ended = review == ReviewOutcome::Stored && EndOfPhase(m_context).Run(session, sent);
    }
    catch (const std::exception& fault)
    {
        journal.ClosingBroken(fault);
    }
    SettleUnconfirmed(sent, journal);
    return ended;
}

} // namespace vellumo::prescription
