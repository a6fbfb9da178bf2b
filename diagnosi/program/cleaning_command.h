// "pulizia": the folders of the exchange log that are older than the practice keeps them, listed, and removed when told
// so. For a person, and for a scheduled task.
#pragma once

#include "diagnosi/program/command.h"

#include <array>

namespace vellumo::diagnosi
{

inline constexpr std::array<Option, 2> cleaningOptions = {{
    {"--giorni", "N", "le cartelle di SISS\\Log più vecchie di N giorni, secondo il loro nome"},
    {"--elimina", "", "le elimina; senza, le elenca soltanto"},
}};

[[nodiscard]] ExitCode RunCleaning(const Task& task);

} // namespace vellumo::diagnosi
