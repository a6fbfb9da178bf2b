#include "tests/support/practice.h"

#include "xml/document.h"

namespace vellumo::tests
{

std::optional<service::ServiceRequest> FutureFactory::GetRequest(service::RequestTypes type) const
{
    const auto found = texts.find(type);
    if (found == texts.end())
    {
        return ServiceFactory::GetRequest(type);
    }
    const auto document = xml::Document::FromText(found->second);
    const std::string path = "/SOAP-ENV:Envelope/SOAP-ENV:Body/m:richiesta";
    return service::ServiceRequest("Prova", path, path, document.value());
}

} // namespace vellumo::tests
