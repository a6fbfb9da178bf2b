#include "service/service_response.h"

namespace vellumo::service
{

std::string ServiceResponse::FirstCode() const
{
    if (FailedResult)
    {
        return FailedResult->Code;
    }
    return Exceptions.Count() > 0 ? Exceptions.Item(1)->Code : std::string();
}

void ServiceResponse::SetData(std::string_view xPath, const host::Value& value)
{
    Data.Select(xPath).SetText(value.ToText());
}

std::string ServiceResponse::GetData(std::string_view xPath) const
{
    return Data.Text(xPath);
}

} // namespace vellumo::service
