// The settings of an installation in a text file, where there is no registry. One setting a line:
//   HKLM\SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths\Norda.exe\Path=/srv/norda
//   HKCU\Software\VB and VBA Program Settings\Norda\SISS\Path=/srv/siss
// UTF-8; the first "=" separates; keys compare without regard to case; other lines are ignored. A key is there when a
// setting stands below it, be it the nameless one ("HKLM\Software\...\="); only there can be written. The file is read
// at every use, as the registry is.
#pragma once

#include "host/settings_store.h"

#include <filesystem>
#include <string>

namespace vellumo::platform
{

class FileSettingsStore final : public host::SettingsStore
{
public:
    explicit FileSettingsStore(std::filesystem::path file)
        : m_file(std::move(file))
    {
    }

    [[nodiscard]] std::optional<std::string> ReadMachineText(std::string_view key, std::string_view name) override;
    [[nodiscard]] std::optional<std::string> ReadUserText(std::string_view key, std::string_view name) override;
    void WriteMachineText(std::string_view key, std::string_view name, std::string_view text) override;

private:
    [[nodiscard]] std::optional<std::string> Read(const std::string& entry) const;

    std::filesystem::path m_file;
};

} // namespace vellumo::platform
