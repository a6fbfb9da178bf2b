// How one logged call to SISS ended, as far as the text of its reply tells. Read as the library itself reads replies.
#pragma once

#include "service/service_exception.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::diagnosi
{

// What SISS and INPS gave a prescription or a certificate; "" where they gave none.
struct GivenCodes
{
    std::string iup;
    std::string protocol;
    std::string inpsProtocol;
};

struct Outcome
{
    enum class Kind
    {
        Accepted,
        Refused,    // SISS gave a negative outcome, or a list of exceptions
        SoapFault,  // the envelope carries a fault
        NotXml,     // the client's own error text, or something broken
        NoOutcome,  // XML without the node that says how the call ended
        OddOutcome, // neither of the outcomes that the service has
        NothingCame
    };

    Kind kind = Kind::NothingCame;
    // Of a refusal or fault; a refused contact may have none, a refusal by exceptions alone has the first one's.
    std::string code;
    std::string text;
    std::string result; // `esitoServizio`
    service::ServiceExceptions exceptions;
    service::ServiceExceptions warnings;
    // Single prescriptions that the end of the phase does not confirm, although it was accepted itself.
    service::ServiceExceptions unconfirmed;
    std::vector<GivenCodes> given;

    // Something that support should look at, warnings left aside.
    [[nodiscard]] bool IsBad() const noexcept { return kind != Kind::Accepted || unconfirmed.Count() > 0; }
};

// `service` as the log's files name it. Empty `reply`: there is no file of it, or it could not be read. Faults only for
// lack of memory.
[[nodiscard]] Outcome OutcomeOf(std::string_view service, const std::optional<std::string>& reply);

} // namespace vellumo::diagnosi
