// One message to SISS: a SOAP envelope loaded from its template, filled by path and sent as text.
//
// A copy shares the document with the original. Values for nodes that the template does not have are dropped; nothing
// here faults.
#pragma once

#include "host/value.h"
#include "xml/document.h"

#include <string>
#include <string_view>

namespace vellumo::service
{

class ServiceRequest
{
public:
    // `dataPath` and `headerPath` are absolute. The document may be empty.
    ServiceRequest(std::string name, std::string dataPath, std::string headerPath, xml::Document document);

    // The node below which the service's own data stand. Looked up at each call.
    [[nodiscard]] xml::Node Data() const;
    // The service's name as the operator and the exchange log see it.
    [[nodiscard]] const std::string& Name() const noexcept { return m_name; }
    void SetData(std::string_view xPath, const host::Value& value);
    [[nodiscard]] std::string GetData(std::string_view xPath) const;
    // The whole envelope, as it is sent.
    [[nodiscard]] std::string ToString() const;
    [[nodiscard]] xml::Node Header() const;
    void SetHeader(std::string_view xPath, const host::Value& value);

private:
    std::string m_name;
    std::string m_dataPath;
    std::string m_headerPath;
    xml::Document m_document;
};

} // namespace vellumo::service
