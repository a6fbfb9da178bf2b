#include "certificate/certificates.h"

#include "certificate/municipality.h"
#include "environment/siss_date_time.h"
#include "host/fault.h"
#include "host/residence_kind.h"
#include "service/service_failure.h"

#include <algorithm>
#include <array>
#include <string>

namespace vellumo::certificate
{
namespace
{

using host::Record;
using service::ServiceRequest;

constexpr const char* sendFailed = "Si è verificato un errore in fase di invio del certificato.";
constexpr const char* cancelFailed = "Si è verificato un errore in fase di annullamento del certificato.";

bool IsRefused(const service::ServiceResponse& response)
{
    return response.FailedResult && !response.FailedResult->Code.empty();
}

// The number that INPS gave, "" for none.
std::string ProtocolIn(const service::ServiceResponse& response)
{
    return IsRefused(response) ? "" : response.GetData("datiINPS/protocolloINPS");
}

std::string CodeOf(const std::string& protocol)
{
    return "protocollo INPS " + protocol;
}

struct FieldMapping
{
    const char* path;
    const char* column;
};

constexpr std::array<FieldMapping, 3> doctorFields = {{
    {"medico/nome", "Nome"},
    {"medico/cognome", "Cognome"},
    {"medico/codiceFiscale", "CodiceFiscale"},
}};

constexpr std::array<FieldMapping, 2> practiceFields = {{
    {"medico/codiceASL", "NumeroASL"},
    {"medico/regione", "CodiceRegione"},
}};

constexpr std::array<FieldMapping, 4> workerFields = {{
    {"lavoratore/codiceFiscale", "CodiceFiscale"},
    {"lavoratore/nome", "Nome"},
    {"lavoratore/cognome", "Cognome"},
    {"lavoratore/sesso", "Sesso"},
}};

// INPS calls the domicile during the illness the usual residence, and the residence the one to be found at.
struct ResidenceMapping
{
    const char* node;
    host::ResidenceKind kind; // its name ends the names of the certificate's columns
};

constexpr std::array<ResidenceMapping, 2> residences = {{
    {"residenzaAbituale", host::ResidenceKind::Domicile},
    {"residenzaReperibilita", host::ResidenceKind::Residence},
}};

struct CodeMapping
{
    std::string_view id;
    const char* code;
};

constexpr std::array<CodeMapping, 3> certificateTypes = {{{"1", "I"}, {"2", "C"}, {"3", "R"}}};
// SISS takes home and surgery visits only.
constexpr std::array<CodeMapping, 2> visitCategories = {{{"1", "A"}, {"6", "D"}}};

template <std::size_t count>
void Fill(const std::array<FieldMapping, count>& fields, const Record& record, ServiceRequest& request)
{
    for (const FieldMapping& field : fields)
    {
        request.SetData(field.path, record.Get(field.column));
    }
}

// An identifier without a code, or one that is no number, leaves the template's content.
template <std::size_t count>
void FillCode(const std::array<CodeMapping, count>& codes, const host::Value& id, const char* path,
              ServiceRequest& request)
{
    const auto* row = std::ranges::find(codes, id.ToText(), &CodeMapping::id);
    if (row != codes.end())
    {
        request.SetData(path, row->code);
    }
}

std::string NameOf(const Record& certificate)
{
    const auto patient = host::Trap(host::Value("?"), [&] { return certificate.Get("IDPaziente"); });
    return "Certificato del paziente " + service::IdentifierText(patient);
}

// A certificate without its doctor or its worker must not go out.
std::unique_ptr<Record> Load(const service::ProviderContext& context, host::RecordKind kind, const host::Value& id)
{
    auto record = context.objects.CreateRecord(kind, context.services);
    if (!record->Load(id.ToInteger()))
    {
        throw host::Fault("Il medico o il paziente del certificato non esiste.");
    }
    return record;
}

} // namespace

bool Certificates::Send(Record* certificate) const noexcept
{
    Run(certificate, &Certificates::SendOrRectify);
    return false;
}

bool Certificates::Cancel(Record* certificate) const noexcept
{
    Run(certificate, &Certificates::CancelSent);
    return false;
}

void Certificates::Run(Record* certificate, void (Certificates::*operation)(const Subject&) const) const noexcept
{
    if (certificate == nullptr)
    {
        return;
    }
    m_context.log.Prepare();
    static_cast<void>(host::Trap(
        false,
        [&]
        {
            (this->*operation)(LoadSubject(*certificate));
            return true;
        },
        [&](const std::exception& fault)
        { m_context.journal.WriteToCheck(NameOf(*certificate) + " non trasmesso. " + service::WhyOf(fault)); }));
    m_context.log.End();
}

Certificates::Subject Certificates::LoadSubject(Record& certificate) const
{
    return {certificate, NameOf(certificate),
            Load(m_context, host::RecordKind::Specialist, certificate.Get("IDSpecialista")),
            Load(m_context, host::RecordKind::Patient, certificate.Get("IDPaziente"))};
}

void Certificates::SendOrRectify(const Subject& subject) const
{
    if (subject.certificate.Read("NumeroProtocollo").ToText().empty()) // a blank is a number
    {
        SendNew(subject);
    }
    else
    {
        Rectify(subject);
    }
}

ServiceRequest Certificates::MakeRequest(service::RequestTypes type, const char* action, const Subject& subject) const
{
    auto request = m_context.factory.GetRequest(type);
    if (!request)
    {
        throw host::Fault(std::string("Richiesta di ") + action + ": " + service::ServiceFactory::WhyNoRequest(type) +
                          ".");
    }
    Fill(doctorFields, *subject.doctor, *request);
    Fill(practiceFields, subject.certificate, *request);
    return std::move(*request);
}

void Certificates::SendNew(const Subject& subject) const
{
    Record& certificate = subject.certificate;
    auto request = MakeRequest(service::rtInviaCertificato, "invio", subject);
    WriteWorker(*subject.patient, request);
    WriteResidences(certificate, request);
    request.SetData("certificato/dataRilascio", environment::ReadableDate(certificate.Get("DataCertificato")));
    request.SetData("certificato/dataInizio", environment::ReadableDate(certificate.Get("DataInizio")));
    request.SetData("certificato/dataFine", environment::ReadableDate(certificate.Get("DataScadenza")));
    request.SetData("certificato/codiceDiagnosi", certificate.Get("CodicePatologia"));
    request.SetData("certificato/noteDiagnosi", certificate.Get("Annotazioni"));
    FillCode(certificateTypes, certificate.Get("IDTipoCertificato"), "certificato/tipoCertificato", request);
    FillCode(visitCategories, certificate.Get("IDCategoriaVisita"), "certificato/tipoVisita", request);

    if (const auto reception = Exchange(request, subject, sendFailed))
    {
        Finish(subject, *reception, {{"NumeroProtocollo", reception->protocol}}, "Certificato inviato con successo.");
    }
}

void Certificates::WriteWorker(const Record& patient, ServiceRequest& request) const
{
    Fill(workerFields, patient, request);
    request.SetData("lavoratore/dataNascita", environment::ReadableDate(patient.Get("DataNascita")));
    const host::Value town = patient.Get("IDComuneNascita");
    request.SetData("lavoratore/idComuneNascita", IstatCodeOf(m_context.services, town));
    request.SetData("lavoratore/comuneNascita", NameOf(m_context.services, town));
    request.SetData("lavoratore/provinciaNascita", ProvinceOf(m_context.services, town));
}

void Certificates::WriteResidences(const Record& certificate, ServiceRequest& request) const
{
    for (const auto& [node, kind] : residences)
    {
        const auto column = [&, suffix = host::NameOf(kind)](const char* name)
        { return certificate.Get(std::string(name).append(suffix)); };
        const std::string path = std::string("lavoratore/") + node;
        const host::Value town = column("IDComune");
        if (town.ToInteger() == 0)
        {
            request.Data().Select(path).Remove();
            continue;
        }
        request.SetData(path + "/indirizzo", column("Indirizzo"));
        request.SetData(path + "/CAP", column("Cap"));
        request.SetData(path + "/idComune", IstatCodeOf(m_context.services, town));
        request.SetData(path + "/comune", column("Comune"));
        request.SetData(path + "/provincia", column("Provincia"));
    }
}

void Certificates::Rectify(const Subject& subject) const
{
    Record& certificate = subject.certificate;
    auto request = MakeRequest(service::rtRettificaCertificato, "rettifica", subject);
    request.SetData("lavoratore/codiceFiscale", subject.patient->Get("CodiceFiscale"));
    request.SetData("certificato/dataFine", environment::ReadableDate(certificate.Get("DataScadenza")));
    const host::Value rectified = certificate.Read("NumeroProtocollo");
    request.SetData("certificato/protocolloDaRettificare", rectified);

    if (const auto reception = Exchange(request, subject, sendFailed))
    {
        Finish(subject, *reception, {{"NumeroProtocolloOrigine", rectified}, {"NumeroProtocollo", reception->protocol}},
               "Certificato rettificato con successo.");
    }
}

void Certificates::CancelSent(const Subject& subject) const
{
    Record& certificate = subject.certificate;
    auto request = MakeRequest(service::rtAnnullaCertificato, "annullamento", subject);
    request.SetData("lavoratore/codiceFiscale", subject.patient->Get("CodiceFiscale"));
    request.SetData("certificato/protocolloDaCancellare", certificate.Read("NumeroProtocollo"));

    if (const auto reception = Exchange(request, subject, cancelFailed))
    {
        Finish(subject, *reception, {{"NumeroProtocolloAnnullamento", reception->protocol}},
               "Certificato annullato con successo.");
    }
}

std::optional<Certificates::Reception> Certificates::Exchange(const ServiceRequest& request, const Subject& subject,
                                                              const char* failureText) const
{
    const auto user = host::Trap(0, [&] { return m_context.services.RequireLockSrv().UserId(); });
    const auto keepNumber = [&](service::ServiceResponse& received)
    {
        if (const auto number = ProtocolIn(received); !number.empty())
        {
            received.OpenCode = m_context.journal.Keep({m_context.services.studio, user, subject.name, CodeOf(number)});
        }
    };
    const auto response =
        m_context.sender.SendServiceRequest(request, {.text = subject.name, .mustBeChecked = true}, keepNumber);
    if (response && IsRefused(*response))
    {
        service::ReportServiceFailure(*response, m_context.journal, m_context.desktop);
        return std::nullopt;
    }
    const std::string protocol = response ? ProtocolIn(*response) : std::string();
    if (protocol.empty())
    {
        m_context.desktop.Show({failureText, "Errore!!", ui::Icon::Critical, ui::Buttons::Ok});
        return std::nullopt;
    }
    const auto received = environment::ConvertSissDateTime(response->GetData("datiINPS/dataRicezione"));
    return Reception{protocol, host::Value::DateOrNull(received), response->OpenCode};
}

void Certificates::Finish(const Subject& subject, const Reception& reception,
                          const std::vector<host::ColumnValue>& numbers, const char* success) const
{
    const bool saved = Store(subject, reception, numbers);
    host::PassOver([&] { m_context.desktop.Show({success, "Informazione", ui::Icon::Information, ui::Buttons::Ok}); });
    if (!saved)
    {
        const auto warning = [&]
        {
            m_context.desktop.Show({"L'INPS ha registrato l'operazione con il protocollo " + reception.protocol +
                                        ", ma il programma non ha potuto salvarlo.\r\n"
                                        "Annotare il numero di protocollo e non ripetere l'operazione.",
                                    "Attenzione!!", ui::Icon::Exclamation, ui::Buttons::Ok});
        };
        host::PassOver(warning);
    }
}

bool Certificates::Store(const Subject& subject, const Reception& reception,
                         const std::vector<host::ColumnValue>& numbers) const noexcept
{
    bool told = false;
    const bool saved = host::Trap(
        false,
        [&]
        {
            for (const auto& [column, number] : numbers)
            {
                subject.certificate.Set(column, number);
            }
            subject.certificate.Set("DataRicezione", reception.date);
            if (!subject.certificate.Save())
            {
                throw host::Fault("Il programma ha rifiutato il salvataggio.");
            }
            return true;
        },
        [&](const std::exception& fault)
        {
            told = m_context.journal.WriteToCheck(subject.name + ": " + CodeOf(reception.protocol) + " non salvato. " +
                                                  service::WhyOf(fault));
        });
    if (reception.open && (saved || told))
    {
        reception.open->Settle();
    }
    return saved;
}

} // namespace vellumo::certificate
