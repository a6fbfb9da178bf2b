// Where the installation keeps its settings: the registry on Windows, a settings file with the same keys elsewhere.
// Keys are registry paths below the root that the member names, with "\" between the levels.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vellumo::host
{

class SettingsStore
{
public:
    virtual ~SettingsStore() = default;

    // Text values; empty when key or value is missing, is no text, or is longer than 255 characters.
    [[nodiscard]] virtual std::optional<std::string> ReadMachineText(std::string_view key, std::string_view name) = 0;
    [[nodiscard]] virtual std::optional<std::string> ReadUserText(std::string_view key, std::string_view name) = 0;

    // Writes a text value (REG_SZ). Faults when the key cannot be opened for writing.
    virtual void WriteMachineText(std::string_view key, std::string_view name, std::string_view text) = 0;
};

} // namespace vellumo::host
