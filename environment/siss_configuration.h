// Where the SISS client is installed, and whether its bridge runs in "DUMPER" mode. Folders are worked out anew at
// every reading; nothing here faults.
#pragma once

#include "host/settings_store.h"

#include <string>

namespace vellumo::environment
{

// Folder of the host program, root of the SISS message files: value "Path" of its application path under the local
// machine's settings. Empty when it is not there; the paths built on it are then relative.
[[nodiscard]] std::string HostProgramFolder(host::SettingsStore& settings);

class SISSConfiguration
{
public:
    // Reads the bridge's configuration file, "WINBRIDGE4SEBACTIVEX.conf" in `ConfigFolder`: 8-bit text, lines
    // "key=value" ending in CR LF, nothing trimmed. Only the key "modalita" counts; its last line decides.
    explicit SISSConfiguration(host::SettingsStore& settings);

    [[nodiscard]] std::string ProgramFolder() const; // the current user's, default C:\AppSISS
    [[nodiscard]] std::string WorkingFolder() const;
    [[nodiscard]] std::string ConfigFolder() const;
    [[nodiscard]] std::string ImportWorkingFolder() const;
    [[nodiscard]] bool IsPersonaleStudio() const noexcept { return m_dumper; }

private:
    host::SettingsStore& m_settings;
    bool m_dumper = false;
};

} // namespace vellumo::environment
