// The native provider as the simulated host's client sees it: linked in, called directly.
#pragma once

#include "provider/siss_provider.h"
#include "simulator/norda/provider_client.h"
#include "ui/desktop.h"

#include <filesystem>
#include <memory>
#include <utility>

namespace vellumo::norda
{

// What the provider finds around itself. Faults where creating the COM object would: when no bridge is installed.
[[nodiscard]] provider::PlatformParts MakeNativeParts(const Outside& outside, std::unique_ptr<ui::Desktop> desktop,
                                                      const std::filesystem::path& settingsFile);
[[nodiscard]] std::unique_ptr<ProviderClient> CreateNativeProvider(provider::PlatformParts parts);

// Both in one.
[[nodiscard]] inline std::unique_ptr<ProviderClient> CreateNativeProvider(const Outside& outside,
                                                                          std::unique_ptr<ui::Desktop> desktop,
                                                                          const std::filesystem::path& settingsFile)
{
    return CreateNativeProvider(MakeNativeParts(outside, std::move(desktop), settingsFile));
}

// The settings file that stands for the registry; see platform/native/file_settings_store.h.
[[nodiscard]] std::unique_ptr<Installation> MakeSettingsFile(const std::filesystem::path& settingsFile);

} // namespace vellumo::norda
