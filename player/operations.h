// The operations that the simulated host can call, by the names that scenarios use.
#pragma once

#include "simulator/norda/provider_client.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace vellumo::player
{

// What came back from a call.
struct Outcome
{
    std::string returned; // "" when it faulted
    std::optional<bool> gestito;
    std::optional<std::string> fault; // its description
};

// One call with all that it may need; an operation takes its part.
struct Asked
{
    norda::ProviderClient& provider;
    // The session that the host keeps, null before the first is opened.
    std::shared_ptr<norda::PrescriptionSession>& session;
    norda::Argument argument;
    norda::Argument second;
    std::int32_t kind = 0;
};

// What stands behind "with".
enum class Arguments
{
    None,
    Patient,      // a value
    Form,         // IDRicetta and the kind
    Prescription, // IDRicetta, NumRicetta and the kind
    Certificate,  // a certificate, or a value in its place
};

struct Operation
{
    Arguments arguments;
    void (*perform)(Asked& asked, Outcome& outcome);
};

// Null when the host has no such operation to call.
[[nodiscard]] const Operation* FindOperation(const std::string& name);

} // namespace vellumo::player
