// How a reply text becomes a response.
#include "service/service_factory.h"
#include "service/siss_codes.h"

#include <algorithm>
#include <array>
#include <vector>

namespace vellumo::service
{
namespace
{

// Where a reply keeps what. `outcome` is a child of the reply element; the others lie below the outcome, "" where the
// service has none. `wrapper` is the node around `esitoServizio` or the data; it has error lists of its own.
struct ReplyRow
{
    std::string_view element;
    std::string_view outcome;
    std::string_view wrapper;
    std::string_view data;
    std::string_view result;
};

constexpr std::string_view citizen = "rispostaSingola/rispostaCittadinoIdentificato";
constexpr std::string_view citizenData = "rispostaSingola/rispostaCittadinoIdentificato/datiRisposta";
constexpr std::string_view citizenResult = "rispostaSingola/rispostaCittadinoIdentificato/esitoServizio";

constexpr std::array<ReplyRow, 10> replies = {{
    {"m:ICCE.identificaCittadinoGUIResponse", "esitoIdentifica", citizen, citizenData, citizenResult},
    {"m:ICCE.identificaCittadinoEstesoResponse", "esitoIdentifica", citizen, citizenData, citizenResult},
    {"m:ICCE.identificaCittadinoResponse", "esitoIdentifica", citizen, citizenData, citizenResult},
    {"m:ICCE.inserisciDatiContattoResponse", "esitoInserisciContatto", "", "", "esitoServizio"},
    {"m:ICCE.modificaDatiContattoResponse", "esitoModificaContatto", "", "", "esitoServizio"},
    {"m:GSSC.inizioFasePrescrittivaResponse", "param", "", "datiRisposta", ""},
    {"m:GSSC.fineFasePrescrittivaResponse", "param", "", "datiRisposta", ""},
    {"m:GSSC.registraPrescrizioneResponse", "param", "rispostaRicettaRegistrata",
     "rispostaRicettaRegistrata/datiRisposta", "rispostaRicettaRegistrata/esitoServizio"},
    {"m:GSSC.annullaPrescrizioneResponse", "param", "rispostaRicettaAnnullata", "rispostaRicettaAnnullata",
     "rispostaRicettaAnnullata/esitoServizio"},
    {"m:GCM.invioCertificatoMalattiaResponse", "param", "rispostaInvioCertificato", "rispostaInvioCertificato", ""},
}};
constexpr ReplyRow anyOtherReply = {"", "param", "", "", ""};

constexpr std::string_view exceptionPath = "listaEccezioni/eccezione";
constexpr std::string_view warningPath = "listaWarning/warning";

const ReplyRow& RowOf(std::string_view element)
{
    const auto* row = std::ranges::find(replies, element, &ReplyRow::element);
    return row == replies.end() ? anyOtherReply : *row;
}

std::shared_ptr<ServiceException> MakeFailure(std::string code, std::string message)
{
    auto failure = std::make_shared<ServiceException>();
    failure->Code = std::move(code);
    failure->Message = std::move(message);
    return failure;
}

void AddExceptions(const xml::Node& node, ServiceExceptions& exceptions)
{
    for (const xml::Node& entry : node.SelectAll(exceptionPath))
    {
        exceptions.AddObject(ServiceFactory::GetException(entry));
    }
}

void AddWarnings(const xml::Node& node, ServiceExceptions& warnings)
{
    for (const xml::Node& entry : node.SelectAll(warningPath))
    {
        warnings.AddObject(ServiceFactory::GetWarning(entry));
    }
}

// The first of the paths that names a node.
xml::Node SelectFirst(const xml::Node& node, std::initializer_list<std::string_view> paths)
{
    for (const auto path : paths)
    {
        if (auto found = node.Select(path))
        {
            return found;
        }
    }
    return {};
}

xml::Node BodyOf(const xml::Document& document)
{
    return SelectFirst(document.Root(), {"/SOAP-ENV:Envelope/SOAP-ENV:Body", "/env:Envelope/env:Body"});
}

void ReadFault(const xml::Node& fault, ServiceResponse& response)
{
    const auto code = SelectFirst(fault, {"detail/faultDetail/errorCode", "faultcode"});
    response.FailedResult = MakeFailure(code.Text(), fault.Text("faultstring"));
}

void ReadOutcome(const xml::Node& outcome, const ReplyRow& row, ServiceResponse& response)
{
    response.Data = outcome.Select(row.data);
    response.ServiceResult = outcome.Text(row.result);
    response.FailedNode = outcome.Select("esitoNegativo");
    if (response.FailedNode)
    {
        response.FailedResult = ServiceFactory::ParseServiceException(response.FailedNode);
    }
    // Only the lists of these very nodes: the reply to the end of a prescribing phase carries refusals of single
    // prescriptions further down, which are no failure of the call.
    std::vector<xml::Node> seen;
    for (const auto& node : {response.FailedNode, outcome, outcome.Select(row.wrapper), response.Data})
    {
        if (node && std::ranges::find(seen, node) == seen.end())
        {
            AddExceptions(node, response.Exceptions);
            AddWarnings(node, response.Warnings);
            seen.push_back(node);
        }
    }
}

} // namespace

std::string ServiceFactory::ReplyElement(const std::string& xmlStream)
{
    const auto document = xml::Document::FromText(xmlStream);
    const auto reply = document ? BodyOf(*document).FirstChildElement() : xml::Node();
    return document && !reply ? document->Root().Name() : reply.Name();
}

std::shared_ptr<ServiceResponse> ServiceFactory::GetResponse(const std::string& xmlStream)
{
    auto response = std::make_shared<ServiceResponse>();
    response->Output = xmlStream;

    const auto document = xml::Document::FromText(xmlStream);
    if (!document)
    {
        response->IsXml = false;
        response->FailedResult = MakeFailure(std::string(code::sebcont0001), xmlStream);
        return response;
    }
    const auto body = BodyOf(*document);
    response->Body = body;
    if (const auto fault = SelectFirst(body, {"SOAP-ENV:Fault", "env:Fault"}))
    {
        ReadFault(fault, *response);
        return response;
    }
    const auto reply = body.FirstChildElement();
    const ReplyRow& row = RowOf(reply.Name());
    const auto outcome = reply.Select(row.outcome);
    if (!outcome)
    {
        return nullptr;
    }
    ReadOutcome(outcome, row, *response);
    return response;
}

std::shared_ptr<ServiceException> ServiceFactory::GetWarning(const xml::Node& node)
{
    auto warning = MakeFailure(node.Text("codiceWarning"), node.Text("descWarning"));
    warning->Field = node.Text("nomeCampo");
    warning->Value = node.Text("valoreCampo");
    warning->FieldCode = node.Text("codiceWarningCampo");
    warning->FieldMessage = node.Text("descWarningCampo");
    return warning;
}

std::shared_ptr<ServiceException> ServiceFactory::GetException(const xml::Node& node)
{
    auto exception = MakeFailure(node.Text("codiceEccezione"), node.Text("descEccezione"));
    exception->Field = node.Text("nomeCampo");
    exception->Value = node.Text("valoreCampo");
    exception->FieldCode = node.Text("codiceEccezioneCampo");
    exception->FieldMessage = node.Text("descEccezioneCampo");
    return exception;
}

std::shared_ptr<ServiceException> ServiceFactory::ParseServiceException(const xml::Node& node)
{
    auto failure = MakeFailure(node.Text("codiceErrore"), node.Text("descErrore"));
    AddWarnings(node, failure->Warnings);
    AddExceptions(node, failure->Exceptions);
    return failure;
}

} // namespace vellumo::service
