#include "environment/siss_configuration.h"

#include "environment/files.h"
#include "host/fault.h"
#include "host/text.h"

#include <string_view>

namespace vellumo::environment
{
namespace
{

constexpr std::string_view hostKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Norda.exe";
constexpr std::string_view userKey = "Software\\VB and VBA Program Settings\\Norda\\SISS";
constexpr std::string_view pathName = "Path";
constexpr std::string_view defaultProgramFolder = "C:\\AppSISS";

bool ReadsDumper(std::string_view text)
{
    constexpr std::string_view lineEnd = "\r\n";
    bool dumper = false;
    while (!text.empty())
    {
        const auto end = text.find(lineEnd);
        const auto line = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + lineEnd.size());

        const auto equals = line.find('=');
        if (equals != std::string_view::npos && line.substr(0, equals) == "modalita")
        {
            const auto rest = line.substr(equals + 1);
            dumper = host::EqualsIgnoringCase(rest.substr(0, rest.find('=')), "DUMPER");
        }
    }
    return dumper;
}

} // namespace

std::string HostProgramFolder(host::SettingsStore& settings)
{
    return host::Trap(std::string(),
                      [&] { return settings.ReadMachineText(hostKey, pathName).value_or(std::string()); });
}

SISSConfiguration::SISSConfiguration(host::SettingsStore& settings)
    : m_settings(settings)
{
    if (const auto text = ReadFile(JoinPath(ConfigFolder(), "WINBRIDGE4SEBACTIVEX.conf")))
    {
        m_dumper = ReadsDumper(*text);
    }
}

std::string SISSConfiguration::ProgramFolder() const
{
    const std::string otherwise(defaultProgramFolder);
    return host::Trap(otherwise, [&] { return m_settings.ReadUserText(userKey, pathName).value_or(otherwise); });
}

std::string SISSConfiguration::WorkingFolder() const
{
    return JoinPath(ProgramFolder(), "SISS");
}

std::string SISSConfiguration::ConfigFolder() const
{
    return JoinPath(WorkingFolder(), "Conf");
}

std::string SISSConfiguration::ImportWorkingFolder() const
{
    return JoinPath(WorkingFolder(), "Prerequisiti\\mysql\\data\\imp_test\\sau");
}

} // namespace vellumo::environment
