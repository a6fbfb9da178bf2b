#include "diagnosi/exchanges/call_outcome.h"

#include "host/text.h"
#include "service/service_factory.h"
#include "service/siss_codes.h"

#include <memory>
#include <utility>

namespace vellumo::diagnosi
{
namespace
{

using service::ServiceFactory;

// Contacts say with a letter what became of them; a refusal comes without a code.
Outcome::Kind KindOfPositive(std::string_view service, std::string_view result)
{
    return !service.ends_with("Contatto")                                 ? Outcome::Kind::Accepted
           : host::EqualsIgnoringCase(result, service::contactRegistered) ? Outcome::Kind::Accepted
           : host::EqualsIgnoringCase(result, service::contactRefused)    ? Outcome::Kind::Refused
                                                                          : Outcome::Kind::OddOutcome;
}

std::string FirstText(const xml::Node& node, std::string_view name)
{
    const auto found = node.Descendants(name);
    return found.empty() ? "" : found.front().Text();
}

void ReadGiven(const xml::Node& node, std::vector<GivenCodes>& given)
{
    GivenCodes codes = {FirstText(node, "identificativoUnivoco"), FirstText(node, "idModulo"),
                        FirstText(node, "protocolloINPS")};
    if (!(codes.iup + codes.protocol + codes.inpsProtocol).empty())
    {
        given.push_back(std::move(codes));
    }
}

void ReadFinalResults(const xml::Node& body, service::ServiceExceptions& unconfirmed)
{
    for (const xml::Node& result : body.Descendants("risultatoRegistrazione"))
    {
        const auto outcome = result.Select("esitoRegistrazione");
        if (!outcome)
        {
            unconfirmed.AddObject(ServiceFactory::ParseServiceException(result.Select("esitoNegativo")));
        }
        else if (outcome.Text() != "OK")
        {
            unconfirmed.Add(result.Text("messaggioRegistrazione"), outcome.Text(), "", "", "", "");
        }
    }
}

Outcome OutcomeOfResponse(std::string_view service, const service::ServiceResponse& response)
{
    Outcome outcome;
    outcome.result = response.ServiceResult;
    outcome.exceptions = response.Exceptions;
    outcome.warnings = response.Warnings;
    ReadFinalResults(response.Body, outcome.unconfirmed);
    const auto results = response.Body.Descendants("risultatoRegistrazione");
    for (const xml::Node& each : results.empty() ? std::vector{response.Body} : results)
    {
        ReadGiven(each, outcome.given);
    }
    if (!response.Failed())
    {
        outcome.kind = KindOfPositive(service, outcome.result);
        return outcome;
    }
    const bool isFault = response.Body.Select("SOAP-ENV:Fault") || response.Body.Select("env:Fault");
    outcome.kind = isFault ? Outcome::Kind::SoapFault : Outcome::Kind::Refused;
    outcome.code = response.FirstCode();
    outcome.text = response.FailedResult ? response.FailedResult->Message : response.Exceptions.Item(1)->Message;
    return outcome;
}

} // namespace

Outcome OutcomeOf(std::string_view service, const std::optional<std::string>& reply)
{
    if (!reply || reply->empty())
    {
        return {};
    }
    const auto response = ServiceFactory::GetResponse(*reply);
    Outcome outcome;
    if (!response)
    {
        outcome.kind = Outcome::Kind::NoOutcome;
        outcome.text = ServiceFactory::ReplyElement(*reply);
    }
    else if (!response->IsXml)
    {
        outcome.kind = Outcome::Kind::NotXml;
        outcome.code = response->FirstCode();
        outcome.text = *reply;
    }
    else
    {
        outcome = OutcomeOfResponse(service, *response);
    }
    return outcome;
}

} // namespace vellumo::diagnosi
