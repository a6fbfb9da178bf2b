// What the program runs on: natively the linked library with its windows at this terminal, on Windows the registered
// DLL with its own.
#pragma once

#include "simulator/norda/workstation.h"

#include <filesystem>
#include <memory>

namespace vellumo::norda
{

// `folder` is the practice's.
[[nodiscard]] std::unique_ptr<Workstation> MakeWorkstation(const std::filesystem::path& folder);

} // namespace vellumo::norda
