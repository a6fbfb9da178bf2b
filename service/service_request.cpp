#include "service/service_request.h"

#include <utility>

namespace vellumo::service
{

ServiceRequest::ServiceRequest(std::string name, std::string dataPath, std::string headerPath, xml::Document document)
    : m_name(std::move(name))
    , m_dataPath(std::move(dataPath))
    , m_headerPath(std::move(headerPath))
    , m_document(std::move(document))
{
}

xml::Node ServiceRequest::Data() const
{
    return m_document.Select(m_dataPath);
}

void ServiceRequest::SetData(std::string_view xPath, const host::Value& value)
{
    Data().Select(xPath).SetText(value.ToText());
}

std::string ServiceRequest::GetData(std::string_view xPath) const
{
    return Data().Text(xPath);
}

std::string ServiceRequest::ToString() const
{
    return m_document.Xml();
}

xml::Node ServiceRequest::Header() const
{
    return m_document.Select(m_headerPath);
}

void ServiceRequest::SetHeader(std::string_view xPath, const host::Value& value)
{
    Header().Select(xPath).SetText(value.ToText());
}

} // namespace vellumo::service
