// The native provider as the simulated host's client sees it: linked in, called directly.
#pragma once

#include "simulator/norda/provider_client.h"
#include "ui/desktop.h"

#include <filesystem>
#include <memory>

namespace vellumo::norda
{

// Faults where creating the COM object would: when no bridge is installed.
[[nodiscard]] std::unique_ptr<ProviderClient> CreateNativeProvider(const Outside& outside,
                                                                   std::unique_ptr<ui::Desktop> desktop,
                                                                   const std::filesystem::path& settingsFile);

// The settings file that stands for the registry; see platform/native/file_settings_store.h.
[[nodiscard]] std::unique_ptr<Installation> MakeSettingsFile(const std::filesystem::path& settingsFile);

} // namespace vellumo::norda
