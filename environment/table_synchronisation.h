// The host operation Sincronizza: tells the SISS client who the host is, and imports the regional tables for which the
// host's own date says so, inside the progress window. Of the three tables that it knows only the exemptions change
// the database: the validity of those that the host has paired with a SISS code. Run-time faults are passed over, row
// by row, so that one bad row does not keep the others out; what came of them is told in one line.
#pragma once

#include "environment/siss_environment.h"
#include "environment/siss_import_index.h"
#include "host/host_services.h"
#include "host/settings_store.h"
#include "ui/desktop.h"

#include <exception>
#include <functional>
#include <string>
#include <utility>

namespace vellumo::ui
{
class FormProgress;
}

namespace vellumo::environment
{

class TableSynchronisation
{
public:
    // Receives a line about what could not be taken over, and its first cause.
    using Tell = std::function<void(const std::string& what, const std::exception& cause)>;

    TableSynchronisation(const host::HostServices& services, SISSEnvironment& environment,
                         host::SettingsStore& settings, ui::Desktop& desktop, Tell tell)
        : m_services(services)
        , m_environment(environment)
        , m_settings(settings)
        , m_desktop(desktop)
        , m_tell(std::move(tell))
    {
    }

    // True when nothing was to be imported or the import came to its end, whatever happened in the tables; False when
    // the progress window could not be shown.
    [[nodiscard]] bool Run() const noexcept;

private:
    class Failures;

    void RegisterHost() const;
    [[nodiscard]] SISSImportIndexs Outdated(Failures& failures) const;
    [[nodiscard]] bool IsOutdated(const SISSImportIndex& index) const;
    // False when the window could not be shown.
    [[nodiscard]] bool ImportInWindow(const SISSImportIndexs& indexs, Failures& failures) const;
    void Import(const SISSImportIndexs& indexs, ui::FormProgress& progress, Failures& failures) const;
    void ImportRows(const SISSImportIndex& index, ui::FormProgress& progress, Failures& failures) const;

    const host::HostServices& m_services;
    SISSEnvironment& m_environment;
    host::SettingsStore& m_settings;
    ui::Desktop& m_desktop;
    Tell m_tell;
};

} // namespace vellumo::environment
