// How the host's connection reports what went wrong in its database, the same on every target.
#pragma once

#include "host/fault.h"

#include <cstdint>
#include <string>

namespace vellumo::norda
{

// What ADO reports for a statement that failed.
inline constexpr auto databaseError = static_cast<std::int32_t>(0x80040E14U);

[[nodiscard]] inline host::Fault DatabaseFault(const std::string& message, std::int32_t number = databaseError)
{
    return host::Fault(message, number, "Norda.Database");
}

} // namespace vellumo::norda
