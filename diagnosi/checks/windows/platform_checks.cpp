#include "diagnosi/checks/platform_checks.h"

#include "diagnosi/checks/windows/host_checks.h"
#include "diagnosi/checks/windows/library_checks.h"
#include "diagnosi/checks/windows/registry_checks.h"

#include <array>

namespace vellumo::diagnosi
{

std::span<const Check> PlatformChecks()
{
    static constexpr std::array<Check, 8> checks = {{
        {"Libreria registrata", CheckLibraryRegistered},
        {"Versioni", CheckVersions},
        {"Nomi usati dal programma (Vellumo.names.txt)", CheckNames},
        {"Collegamento al SISS", CheckBridge},
        {"Creazione della libreria", CheckProvider},
        {"Oggetti del programma", CheckHostClasses},
        {"Identità presso il SISS (CC_0)", CheckIdentityKey},
        {"Cartelle reindirizzate", CheckRedirected},
    }};
    return checks;
}

} // namespace vellumo::diagnosi
