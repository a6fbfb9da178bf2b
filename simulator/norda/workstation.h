// The computer that norda runs on: where the library comes from and where the installation keeps its settings.
#pragma once

#include "simulator/norda/provider_client.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vellumo::norda
{

class Workstation
{
public:
    virtual ~Workstation() = default;

    // Faults when the library refuses, with the text that a host would get.
    [[nodiscard]] virtual std::unique_ptr<ProviderClient> CreateProvider(const Outside& outside) = 0;
    [[nodiscard]] virtual Installation& Machine() = 0;
};

// What is found on this machine, by the names of the report of the acceptance kit: system, library, parser.
[[nodiscard]] std::vector<std::pair<std::string, std::string>> MachineFacts();

} // namespace vellumo::norda
