// The computer that norda runs on: where the library comes from and where the installation keeps its settings.
#pragma once

#include "simulator/norda/provider_client.h"

#include <filesystem>
#include <memory>

namespace vellumo::norda
{

class Workstation
{
public:
    virtual ~Workstation() = default;

    // Faults as creating the library's object does.
    [[nodiscard]] virtual std::unique_ptr<ProviderClient> CreateProvider(const Outside& outside) = 0;
    [[nodiscard]] virtual Installation& Machine() = 0;
};

// Defined by the platform: natively the linked library with its windows at this terminal, on Windows the registered
// DLL with its own. `folder` is the practice's.
[[nodiscard]] std::unique_ptr<Workstation> MakeWorkstation(const std::filesystem::path& folder);

} // namespace vellumo::norda
