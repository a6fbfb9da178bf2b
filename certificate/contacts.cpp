#include "certificate/contacts.h"

#include "certificate/house_number.h"
#include "certificate/municipality.h"
#include "environment/siss_date_time.h"
#include "host/fault.h"
#include "host/text.h"
#include "service/service_failure.h"
#include "service/siss_codes.h"

#include <memory>
#include <string>

namespace vellumo::certificate
{
namespace
{

using service::ServiceRequest;
using service::ServiceResponse;

// A refused modification carries no failure of its own.
ServiceResponse RefusalOf(const ServiceRequest& request)
{
    ServiceResponse refusal;
    refusal.FailedResult = std::make_shared<service::ServiceException>();
    refusal.FailedResult->Code = std::string(service::contactRefused);
    refusal.FailedResult->Message = request.Name();
    return refusal;
}

std::string SubjectOf(const host::Value& idPaziente)
{
    return "Contatto del paziente " + service::IdentifierText(idPaziente);
}

// SISS says with this code and this field that it knows the contact already.
bool AsksForModification(const ServiceResponse& response)
{
    return response.FailedResult && response.FailedResult->Code == service::code::ea0004 &&
           response.Exceptions.Count() > 0 && response.Exceptions.Item(1)->FieldCode == service::code::ed0511;
}

} // namespace

bool Contacts::Insert(const host::Value& idPaziente) const noexcept
{
    m_context.log.Prepare();
    static_cast<void>(host::Trap(
        false, [&] { return SendContactData(idPaziente, false); },
        [&](const std::exception& fault) { Tell(idPaziente, service::WhyOf(fault)); }));
    m_context.log.End();
    return false;
}

bool Contacts::SendContactData(const host::Value& idPaziente, bool asModification) const
{
    const auto type = asModification ? service::rtModificaDatiContatto : service::rtInserisciDatiContatto;
    auto request = m_context.factory.GetRequest(type);
    if (!request)
    {
        throw host::Fault(service::ServiceFactory::WhyNoRequest(type) + ".");
    }
    const auto patient = LoadPatient(idPaziente);
    FillContactPerson(*request, *patient);
    const auto response = m_context.sender.SendServiceRequest(*request, {.text = SubjectOf(idPaziente)});
    if (!response)
    {
        return false;
    }
    const bool failed = response->Failed();
    const std::string& result = response->ServiceResult;
    if (!failed && !host::EqualsIgnoringCase(result, service::contactRefused))
    {
        if (!host::EqualsIgnoringCase(result, service::contactRegistered))
        {
            throw host::Fault("il SISS ha risposto con un esito non previsto.");
        }
        return true;
    }
    if (!asModification && (!failed || AsksForModification(*response)))
    {
        return SendContactData(idPaziente, true);
    }
    if (failed && !response->FailedResult)
    {
        throw host::Fault("il SISS ha risposto con errori, ma senza un esito.");
    }
    service::ReportServiceFailure(failed ? *response : RefusalOf(*request), m_context.journal, m_context.desktop);
    return false;
}

void Contacts::Tell(const host::Value& idPaziente, const std::string& why) const
{
    m_context.journal.Write(SubjectOf(idPaziente) + ": " + why);
}

std::unique_ptr<host::Record> Contacts::LoadPatient(const host::Value& idPaziente) const
{
    auto patient = m_context.objects.CreateRecord(host::RecordKind::Patient, m_context.services);
    const std::int32_t id = idPaziente.ToInteger();
    if (id <= 0 || !patient->Load(id))
    {
        throw host::Fault("il paziente non esiste.");
    }
    return patient;
}

void Contacts::FillContactPerson(ServiceRequest& request, const host::Record& patient) const
{
    request.SetData("contatto/nome", patient.Get("Nome"));
    request.SetData("contatto/cognome", patient.Get("Cognome"));
    request.SetData("contatto/dataNascita", environment::ReadableDate(patient.Get("DataNascita")));
    request.SetData("contatto/codiceFiscale", patient.Get("CodiceFiscale"));
    request.SetData("contatto/sesso", patient.Get("Sesso"));
    request.SetData("contatto/idLocalitaNascita", IstatCodeOf(m_context.services, patient.Get("IDComuneNascita")));
    request.SetData("contatto/tipoRilevazione", "M");
    if (patient.Get("Deceduto").ToBoolean())
    {
        request.SetData("contatto/dataDecesso", environment::ReadableDate(patient.Get("DataRevoca")));
    }
    FillContactAddress(request, patient, host::ResidenceKind::Domicile);
    FillContactAddress(request, patient, host::ResidenceKind::Residence);
}

void Contacts::FillContactAddress(ServiceRequest& request, const host::Record& patient, host::ResidenceKind kind) const
{
    const std::string node = std::string("puntiIndirizzo").append(host::NameOf(kind));
    const auto rows = m_context.services.RequireUtils().OpenRecordset(
        "SELECT Residenza.Indirizzo, Norda..Comune.Cap, Norda..Comune.CodiceISTAT, Norda..Comune.Comune FROM Residenza "
        "LEFT JOIN Norda..Comune ON Norda..Comune.IDComune = Residenza.IDComune WHERE Residenza.IDPaziente = {0} "
        "AND Residenza.IDTipoResidenza = {1}",
        {patient.Id(), static_cast<std::int32_t>(kind)});
    if (rows->IsAtEnd())
    {
        request.Data().Select(node).Remove();
        return;
    }
    const host::Value address = rows->Field("Indirizzo");
    request.SetData(node + "/indirizzo", address);
    request.SetData(node + "/cap", rows->Field("Cap"));
    request.SetData(node + "/comune", rows->Field("Comune"));
    request.SetData(node + "/civico", ExtractHouseNumber(address.ToText()));
    request.SetData(node + "/localita", rows->Field("CodiceISTAT"));
}

} // namespace vellumo::certificate
