// What SISS wants to know of a town that the host names by its identifier: look-ups in the host's shared database. Each
// returns "" for a town that is not there; database faults go through.
#pragma once

#include "host/host_services.h"
#include "host/value.h"

#include <string>

namespace vellumo::certificate
{

[[nodiscard]] std::string IstatCodeOf(const host::HostServices& services, const host::Value& idComune);
[[nodiscard]] std::string NameOf(const host::HostServices& services, const host::Value& idComune);
// Two letters, such as "MI".
[[nodiscard]] std::string ProvinceOf(const host::HostServices& services, const host::Value& idComune);

} // namespace vellumo::certificate
