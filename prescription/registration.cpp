#include "prescription/registration.h"

#include "host/fault.h"
#include "host/text.h"
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
    Progress progress = {.at = {.kind = kind, .key = {}}, .unkept = nullptr};
    try
    {
        progress.at.key = {idRicetta.ToInteger(), numRicetta.ToInteger()};
        RegisterAll(session, progress);
        return true;
    }
    catch (const std::exception& fault)
    {
        Tell(progress, fault);
        m_context.desktop.Show({std::string("Si è verificato un errore in fase di registrazione della ricetta.\r\n"
                                            "Il messaggi tecnico dell'errore è: ") +
                                    fault.what() + "\r\nContattare l'assistenza tecnica.",
                                "Errore!!", ui::Icon::Critical, ui::Buttons::Ok});
        return false;
    }
}

void Registration::Tell(const Progress& progress, const std::exception& fault) const
{
    if (progress.unkept)
    {
        m_journal.NotSaved(progress.at, {SentPrescription::GivenIup(*progress.unkept), ""}, service::WhyOf(fault),
                           progress.unkept->OpenCode);
    }
    else
    {
        m_journal.RegistrationBroken(progress.at, fault);
    }
}

void Registration::RegisterAll(host::PrescriptionSession& session, Progress& progress) const
{
    const auto settings = m_context.objects.CreateSettings(m_context.services);
    if (!settings->Load(m_context.services.studio))
    {
        return;
    }
    const bool sendsClassC =
        m_context.services.RequireUtils().ToBoolean(settings->Get("CCEInviaRicettaFarmaciClasseC"));
    const PrescriptionId form = progress.at;
    const auto data = m_context.prescriptions.CreatePrescriptionData(form.kind, m_context.services);
    for (const auto& row : data->List(form.key.IDRicetta, form.key.NumRicetta))
    {
        progress.at.key = row;
        Register(session, progress, sendsClassC);
    }
}

void Registration::Register(host::PrescriptionSession& session, Progress& progress, bool sendsClassC) const
{
    const auto [kind, key] = progress.at;
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
    const std::int32_t user = m_journal.User();
    const auto keepCode = [&](service::ServiceResponse& received) {
        received.OpenCode = m_journal.Keep(progress.at.Name(), {SentPrescription::GivenIup(received), ""}, user);
    };
    if (const auto response = m_context.sender.SendServiceRequest(*request, {progress.at.Name(), true}, keepCode))
    {
        progress.unkept = response;
        response->Object = record;
        Keep(session, progress.at, response, *options);
        progress.unkept = nullptr;
    }
}

void Registration::Keep(host::PrescriptionSession& session, const PrescriptionId& id,
                        const std::shared_ptr<service::ServiceResponse>& response, host::OpzioniRicetta& options) const
{
    const std::string iup = SentPrescription::GivenIup(*response);
    if (iup.empty())
    {
        session.AddResponse(id.kind, response);
        return;
    }
    options.UnkeptCodes.push_back({id.Name(), iup});
    session.AddResponse(id.kind, response);
    options.UnkeptCodes.pop_back();
}

} // namespace vellumo::prescription
