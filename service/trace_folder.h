// The folder SISS\Tracce below the host program's folder, made when it is first needed. The folder SISS must be there.
//
//   tracce 2026-11.txt                     lines, a file a month, shared by all who may write it
//   tracce 2026-11 2.txt                   and so on: those of a further user, where each may change only his own files
//   codici 2026-11-22 10.15.00 PC3-1.txt   codes that SISS gave and that are not yet where they belong; one provider's
//
// Both are 8-bit text. A line of the latter begins with "*" while the code is open and with "-" when it is settled,
// then come studio, machine, user, time, subject and code, with tabs between them. The file is its provider's as long
// as that lives, and goes when no code in it is open.
#pragma once

#include "host/clock.h"
#include "host/settings_store.h"
#include "host/traces.h"

#include <memory>
#include <string>
#include <string_view>

namespace vellumo::service
{

// How the names of the two kinds begin.
inline constexpr std::string_view lineFilePrefix = "tracce ";
inline constexpr std::string_view codeFilePrefix = "codici ";

class TraceFolder final : public host::Traces
{
public:
    // Both outlive the folder, but not the entries.
    TraceFolder(host::SettingsStore& settings, const host::Clock& clock);

    [[nodiscard]] bool Append(std::string_view line) noexcept override;
    [[nodiscard]] std::shared_ptr<host::OpenCodeEntry> Keep(const host::OpenCode& code) noexcept override;
    void Recover(std::int32_t studio, const Tell& tell) noexcept override;

    class CodeFile; // shared with its entries

private:
    [[nodiscard]] std::string Folder() const;
    [[nodiscard]] std::shared_ptr<CodeFile> MakeCodeFile() const;

    host::SettingsStore& m_settings;
    const host::Clock& m_clock;
    std::shared_ptr<CodeFile> m_codes;
};

} // namespace vellumo::service
