// The SISS client's installation on this machine: its configuration and the regional tables that it leaves as files
// in `SISSConfiguration::ImportWorkingFolder`. Owned by the provider, lives as long as it.
#pragma once

#include "environment/siss_configuration.h"
#include "environment/siss_import_index.h"
#include "environment/siss_import_table.h"
#include "host/clock.h"
#include "host/settings_store.h"

#include <optional>
#include <string>

namespace vellumo::environment
{

class SISSEnvironment
{
public:
    SISSEnvironment(host::SettingsStore& settings, const host::Clock& clock);

    [[nodiscard]] const SISSConfiguration& Configuration() const noexcept { return m_configuration; }

    // The entries of master.txt, read at the first use and kept: a later change of the file is seen by a new provider
    // only. Without a readable master file it is empty; an entry whose date cannot be read has the zero date; the
    // second entry of a name is left out. Never faults.
    [[nodiscard]] const SISSImportIndexs& ImportIndexs();

    // Reads the entry's file afresh. Faults when it is missing or unreadable.
    [[nodiscard]] SISSImportTable GetImportTable(const SISSImportIndex& index) const;

    // The entry that stands for the master index itself.
    [[nodiscard]] SISSImportIndex DefaultIndex() const;

    // "year-month-day" as the index has it; a time of day behind it, after "T" or a blank, counts for nothing. Faults
    // on anything else. Index dates are read here; those in columns of the tables and in messages have forms of their
    // own, see environment/siss_date_time.h.
    [[nodiscard]] static host::Date ConvertToDateTime(const std::string& text);

private:
    void LoadImportIndexs();
    [[nodiscard]] static host::Date UpdateOf(const std::string& text);

    const host::Clock& m_clock;
    SISSConfiguration m_configuration;
    std::optional<SISSImportIndexs> m_importIndexs;
};

} // namespace vellumo::environment
