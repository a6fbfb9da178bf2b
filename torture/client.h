// The provider as the simulated host calls it in this program: the library is at work inside each call, and what it is
// handed may fail.
#pragma once

#include "simulator/norda/provider_client.h"

#include <functional>
#include <memory>

namespace vellumo::torture
{

// `create` makes the provider itself.
[[nodiscard]] std::unique_ptr<norda::ProviderClient>
CreateTortured(const std::function<std::unique_ptr<norda::ProviderClient>()>& create);

} // namespace vellumo::torture
