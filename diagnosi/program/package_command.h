// "pacchetto": the anonymised package for support.
#pragma once

#include "diagnosi/program/command.h"
#include "diagnosi/support/package.h"

#include <array>

namespace vellumo::diagnosi
{

inline constexpr std::array<Option, 6> packageOptions = {{
    {"--giorni", "N", "il registro degli ultimi N giorni, oggi compreso (altrimenti 7)"},
    {"--dal", "GG/MM/AAAA", "da quel giorno"},
    {"--al", "GG/MM/AAAA", "fino a quel giorno"},
    {"--file", "FILE", "dove scrivere il pacchetto (altrimenti nella cartella dei file temporanei)"},
    {"--anteprima", "", "scrive solo la pagina che mostra tutto ciò che uscirebbe dallo studio"},
    {"--conferma", "", "scrive il pacchetto; senza, dice solo che cosa conterrebbe"},
}};

// What a package of this installation is made from; the checks are run.
[[nodiscard]] PackageSource SourceOf(const Machine& machine, const Period& period);

[[nodiscard]] ExitCode RunPackage(const Task& task);

} // namespace vellumo::diagnosi
