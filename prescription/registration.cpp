#include "prescription/registration.h"

#include "host/fault.h"
#include "host/text.h"
#include "prescription/journal.h"
#include "prescription/payload.h"
#include "prescription/ricetta_record.h"
#include "prescription/sent_prescription.h"

#include <string>

namespace vellumo::prescription
{
namespace
{

// Drugs that the citizen pays himself, in either spelling.
bool HasClassC(const RicettaRecord& record)
{
    for (std::int32_t item = 1; item <= record.DetailCount(); ++item)
    {
        if (host::EqualsIgnoringCase(record.GetItem(ricetta::itemClasse, item).ToText(), "C"))
        {
            return true;
        }
    }
    return false;
}

} // namespace

bool Registration::Run(host::PrescriptionSession& session, const host::Value& idRicetta, const host::Value& numRicetta,
                       std::int32_t kind) const
{
    if (session.DaValidare() || session.SenzaSISS())
    {
        return true;
    }
    try
    {
        RegisterAll(session, {idRicetta.ToInteger(), numRicetta.ToInteger()}, kind);
        return true;
    }
    catch (const std::exception& fault)
    {
        m_context.desktop.Show({std::string("Si è verificato un errore in fase di registrazione della ricetta.\r\n"
                                            "Il messaggi tecnico dell'errore è: ") +
                                    fault.what() + "\r\nContattare l'assistenza tecnica.",
                                "Errore!!", ui::Icon::Critical, ui::Buttons::Ok});
        return false;
    }
}

void Registration::RegisterAll(host::PrescriptionSession& session, const host::PrescriptionKey& key,
                               std::int32_t kind) const
{
    const auto settings = m_context.objects.CreateSettings(m_context.services);
    if (!settings->Load(m_context.services.studio))
    {
        return;
    }
    const bool sendsClassC =
        m_context.services.RequireUtils().ToBoolean(settings->Get("CCEInviaRicettaFarmaciClasseC"));
    const auto data = m_context.prescriptions.CreatePrescriptionData(kind, m_context.services);
    for (const auto& row : data->List(key.IDRicetta, key.NumRicetta))
    {
        Register(session, row, kind, sendsClassC);
    }
}

void Registration::Register(host::PrescriptionSession& session, const host::PrescriptionKey& key, std::int32_t kind,
                            bool sendsClassC) const
{
    const auto record = BuildRicettaRecord(key, kind, m_context.services);
    if (!record || (!sendsClassC && HasClassC(*record)))
    {
        return;
    }
    auto request = m_context.factory.GetRequest(kind == host::kindDrugs ? service::rtRegistraPrescrizioneFarmaci
                                                                        : service::rtRegistraPrescrizioneAccertamenti);
    if (!request)
    {
        throw host::Fault("Manca il modello della richiesta di registrazione.");
    }
    const auto options = session.Options();
    if (!options)
    {
        throw host::Fault("La sessione di prescrizione non ha le opzioni di stampa.");
    }
    WriteDatiCittadino(*record, *request);
    WriteDatiPrescrizione(*record, *request, kind, m_context.services);
    WriteElencoPrestazioni(*record, *request, kind);
    WriteOpzioni(*options, *request);
    const Journal journal(m_context.services);
    const auto response = m_context.sender.SendServiceRequest(*request, {Journal::Name(kind, key), true});
    if (!response)
    {
        return;
    }
    response->Object = record;
    try
    {
        session.AddResponse(kind, response);
    }
    catch (const std::exception& fault)
    {
        // Without its place in the session the close will not see it.
        const SentPrescription lost{kind, response, record};
        journal.NotSaved(key, {lost.GivenIup(), ""}, fault.what());
        throw;
    }
}

} // namespace vellumo::prescription
