// A SISS reply, taken apart. Made by the ServiceFactory; shared by whoever keeps it.
#pragma once

#include "host/kept_object.h"
#include "host/traces.h"
#include "host/value.h"
#include "service/service_exception.h"
#include "xml/document.h"

#include <memory>
#include <string>
#include <string_view>

namespace vellumo::service
{

class ServiceResponse final : public host::KeptObject
{
public:
    std::string ServiceResult;                // text of `esitoServizio`
    std::string Output;                       // the whole reply as received
    bool IsXml = true;                        // False: `Output` is any other text, or empty
    bool IsTold = false;                      // a line tells already why it failed
    std::shared_ptr<host::KeptObject> Object; // of the operation that sent the request
    xml::Node Data;                           // the service's own result, empty when the reply has none
    xml::Node Body;                           // of the envelope that `Data` comes from
    std::string Request;                      // no reply known today carries one: empty
    ServiceExceptions Exceptions;
    ServiceExceptions Warnings;
    std::shared_ptr<ServiceException> FailedResult; // null when the call did not fail as a whole
    host::Value Parameters;                         // of the operation that sent the request
    xml::Node FailedNode;                           // `esitoNegativo`, empty when the reply has none
    // Of the code that the reply brought; whoever puts that where it belongs settles it and lets go of it.
    std::shared_ptr<host::OpenCodeEntry> OpenCode;

    // True when the call failed as a whole or the reply lists at least one exception.
    [[nodiscard]] bool Failed() const noexcept { return FailedResult != nullptr || Exceptions.Count() > 0; }

    // Code of the failure as a whole, else of the first exception, else "".
    [[nodiscard]] std::string FirstCode() const;

    // Relative to `Data`, as in ServiceRequest.
    void SetData(std::string_view xPath, const host::Value& value);
    [[nodiscard]] std::string GetData(std::string_view xPath) const;
};

} // namespace vellumo::service
