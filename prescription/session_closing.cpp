#include "prescription/session_closing.h"

#include "host/fault.h"
#include "prescription/end_of_phase.h"
#include "prescription/journal.h"
#include "prescription/registration_review.h"

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
    std::vector<SentPrescription> sent; // whatever breaks off, the codes that were read are told
    const auto review = host::Trap(ReviewOutcome::BrokenOff,
                                   [&]
                                   {
                                       sent = SentPrescriptions(session);
                                       return RegistrationReview(m_context).Run(sent);
                                   });
    if (review == ReviewOutcome::GivenUp)
    {
        return false;
    }
    const bool ended =
        review == ReviewOutcome::Stored && host::Trap(false, [&] { return EndOfPhase(m_context).Run(session, sent); });
    RecordUnconfirmed(sent);
    return ended;
}

void SessionClosing::RecordUnconfirmed(const std::vector<SentPrescription>& sent) const
{
    const Journal journal(m_context.services);
    for (const auto& prescription : sent)
    {
        if (const auto iup = prescription.GivenIup(); !prescription.settled && !iup.empty())
        {
            journal.NotConfirmed(prescription.record->Key(), iup);
        }
    }
}

} // namespace vellumo::prescription
