#include "diagnosi/checks/machine.h"

#include "environment/files.h"
#include "environment/siss_configuration.h"

namespace vellumo::diagnosi
{

using environment::JoinPath;

std::string SissFolder(const Machine& machine)
{
    return JoinPath(environment::HostProgramFolder(machine.settings), "SISS");
}

std::string TemplatesFolder(const Machine& machine)
{
    return JoinPath(SissFolder(machine), "Templates");
}

std::string LogFolder(const Machine& machine)
{
    return JoinPath(SissFolder(machine), "Log");
}

std::string TraceFolder(const Machine& machine)
{
    return JoinPath(SissFolder(machine), "Tracce");
}

} // namespace vellumo::diagnosi
