// Makes requests from their templates and responses from reply texts. Owned by the provider. A text that is not what it
// should be is no fault; a file that is there and cannot be read is one, and so is a lack of memory.
#pragma once

#include "host/settings_store.h"
#include "service/request_types.h"
#include "service/service_exception.h"
#include "service/service_request.h"
#include "service/service_response.h"
#include "xml/document.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vellumo::service
{

class ServiceFactory
{
public:
    explicit ServiceFactory(host::SettingsStore& settings);
    virtual ~ServiceFactory() = default;

    // Loads the type's template from the folder SISS\Templates below the host program's. Empty for a type without a
    // template of its own and for a template file that is missing; one that is not XML gives a request without nodes.
    [[nodiscard]] virtual std::optional<ServiceRequest> GetRequest(RequestTypes requestType) const;

    // Why `GetRequest` gives none of that type, for a line: without a full stop.
    [[nodiscard]] static std::string WhyNoRequest(RequestTypes requestType);

    // A canned reply from SISS\Tests, for rtIdentificaCittadino only. Null when there is none.
    [[nodiscard]] std::shared_ptr<ServiceResponse> GetTestResponse(RequestTypes requestType) const;

    // Null for well-formed XML without the node that says how the call ended. Every other text gives a response: one
    // that is no XML fails with code "SEBCONT0001" and the text as message, which is how the bridge reports its errors.
    [[nodiscard]] static std::shared_ptr<ServiceResponse> GetResponse(const std::string& xmlStream);

    // Name of the element in the body of a reply, of the root of any other document; "" for what is no XML.
    [[nodiscard]] static std::string ReplyElement(const std::string& xmlStream);

    // From a `warning`, an `eccezione`, and a node that carries `codiceErrore` (`esitoNegativo`).
    [[nodiscard]] static std::shared_ptr<ServiceException> GetWarning(const xml::Node& node);
    [[nodiscard]] static std::shared_ptr<ServiceException> GetException(const xml::Node& node);
    [[nodiscard]] static std::shared_ptr<ServiceException> ParseServiceException(const xml::Node& node);

private:
    [[nodiscard]] std::string PathOf(std::string_view folder, std::string_view fileName) const;

    host::SettingsStore& m_settings;
};

} // namespace vellumo::service
