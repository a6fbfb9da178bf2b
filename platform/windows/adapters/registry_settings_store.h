// The installation's settings in the Windows registry. A text that refers to environment variables (REG_EXPAND_SZ) is
// returned with their values.
#pragma once

#include "host/settings_store.h"

namespace vellumo::windows
{

class RegistrySettingsStore final : public host::SettingsStore
{
public:
    [[nodiscard]] std::optional<std::string> ReadMachineText(std::string_view key, std::string_view name) override;
    [[nodiscard]] std::optional<std::string> ReadUserText(std::string_view key, std::string_view name) override;
    void WriteMachineText(std::string_view key, std::string_view name, std::string_view text) override;
};

} // namespace vellumo::windows
