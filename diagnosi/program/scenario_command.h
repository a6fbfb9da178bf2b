// "scenario": a log of exchanges, or that of a support package, as a scenario file, for whoever develops.
#pragma once

#include "diagnosi/program/command.h"

#include <array>

namespace vellumo::diagnosi
{

inline constexpr std::array<Option, 4> scenarioOptions = {{
    {"--giorni", "N", "solo gli ultimi N giorni, oggi compreso"},
    {"--dal", "GG/MM/AAAA", "da quel giorno"},
    {"--al", "GG/MM/AAAA", "fino a quel giorno"},
    {"--file", "FILE", "dove scriverlo; altrimenti lo mostra"},
}};

[[nodiscard]] ExitCode RunScenario(const Task& task);

} // namespace vellumo::diagnosi
