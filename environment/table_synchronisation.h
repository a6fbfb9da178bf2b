// The host operation Sincronizza: tells the SISS client who the host is, and imports the regional tables for which the
// host's own date says so, inside the progress window. Of the three tables that it knows only the exemptions change
// the database: the validity of those that the host has paired with a SISS code. Run-time faults are passed over, row
// by row, so that one bad row does not keep the others out.
#pragma once

#include "environment/siss_environment.h"
#include "environment/siss_import_index.h"
#include "host/host_services.h"
#include "host/settings_store.h"
#include "ui/desktop.h"

namespace vellumo::ui
{
class FormProgress;
}

namespace vellumo::environment
{

class TableSynchronisation
{
public:
    TableSynchronisation(const host::HostServices& services, SISSEnvironment& environment,
                         host::SettingsStore& settings, ui::Desktop& desktop)
        : m_services(services)
        , m_environment(environment)
        , m_settings(settings)
        , m_desktop(desktop)
    {
    }

    // True when nothing was to be imported or the import came to its end, whatever happened in the tables; False when
    // the progress window could not be shown.
    [[nodiscard]] bool Run() const noexcept;

private:
    void RegisterHost() const;
    [[nodiscard]] SISSImportIndexs Outdated() const;
    [[nodiscard]] bool IsOutdated(const SISSImportIndex& index) const;
    // False when the window could not be shown.
    [[nodiscard]] bool ImportInWindow(const SISSImportIndexs& indexs) const;
    void Import(const SISSImportIndexs& indexs, ui::FormProgress& progress) const;
    void ImportRows(const SISSImportIndex& index, ui::FormProgress& progress) const;

    const host::HostServices& m_services;
    SISSEnvironment& m_environment;
    host::SettingsStore& m_settings;
    ui::Desktop& m_desktop;
};

} // namespace vellumo::environment
