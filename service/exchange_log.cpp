#include "service/exchange_log.h"

#include "environment/ansi_text.h"
#include "environment/files.h"
#include "environment/siss_configuration.h"
#include "environment/siss_date_time.h"
#include "host/fault.h"

namespace vellumo::service
{

ExchangeLog::ExchangeLog(const host::HostServices& services, host::HostObjects& objects, host::SettingsStore& settings,
                         const host::Clock& clock)
    : m_services(services)
    , m_objects(objects)
    , m_settings(settings)
    , m_clock(clock)
{
}

bool ExchangeLog::IsEnabled() const noexcept
{
    return host::Trap(false,
                      [&]
                      {
                          const auto settings = m_objects.CreateSettings(m_services);
                          host::Utils& utils = m_services.RequireUtils();
                          return settings->Load(m_services.studio) && utils.ToBoolean(settings->Get("CCEAbilitato")) &&
                                 utils.ToBoolean(settings->Get("CCEAbilitaLog"));
                      });
}

void ExchangeLog::Prepare() noexcept
{
    if (!IsEnabled())
    {
        return;
    }
    // Without a folder of its own an operation must not write into the one before it, which is another patient's.
    m_folder = host::Trap(std::string(), [&] { return MakeFolder(); });
}

std::string ExchangeLog::MakeFolder() const
{
    using environment::JoinPath;
    const std::string log = JoinPath(JoinPath(environment::HostProgramFolder(m_settings), "SISS"), "Log");
    const std::string folder = JoinPath(log, environment::Stamp(m_clock.Now()));
    return environment::CreateFolder(log) && environment::CreateFolder(folder) ? folder : std::string();
}

void ExchangeLog::Write(const ServiceRequest& request, std::string_view reply) noexcept
{
    const bool isReady =
        host::Trap(false, [&] { return !m_folder.empty() && IsEnabled() && environment::FolderExists(m_folder); });
    if (!isReady)
    {
        return;
    }
    ++m_counter;
    host::PassOver([&] { WritePart("Richiesta", request, request.ToString()); });
    host::PassOver([&] { WritePart("Risposta", request, reply); });
}

bool ExchangeLog::End() noexcept
{
    static_cast<void>(IsEnabled());
    return false;
}

void ExchangeLog::WritePart(std::string_view part, const ServiceRequest& request, std::string_view text) const
{
    std::string name = std::to_string(m_counter);
    name.append(" - ").append(part).append(" ").append(request.Name());
    environment::WriteFile(environment::JoinPath(m_folder, name), environment::ToAnsi(text));
}

} // namespace vellumo::service
