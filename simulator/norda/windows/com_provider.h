// The registered library as the simulated host's client sees it: created by its ProgID, called through the host's
// interfaces, with the host's own objects handed over as COM objects of this process. COM must have been initialized
// on the thread, apartment-threaded, and must stay so as long as the client lives.
#pragma once

#include "simulator/norda/provider_client.h"

#include <memory>

namespace vellumo::norda
{

// Faults with the library's own description when it cannot be created: because it is not registered, or because
// `outside` has no bridge.
[[nodiscard]] std::unique_ptr<ProviderClient> CreateComProvider(const Outside& outside);

// The registry.
[[nodiscard]] std::unique_ptr<Installation> MakeRegistryInstallation();

} // namespace vellumo::norda
