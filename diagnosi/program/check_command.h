// "controlla": the checks of the installation as a text.
#pragma once

#include "diagnosi/program/command.h"

#include <array>

namespace vellumo::diagnosi
{

inline constexpr std::array<Option, 2> checkOptions = {{
    {"--connessione", "STRINGA", "controlla anche il database dello studio (stringa di connessione ODBC)"},
    {"--connessione-norda", "STRINGA",
     "dove sono le tabelle comuni, se non sono il database Norda dello stesso server"},
}};

[[nodiscard]] ExitCode RunCheck(const Task& task);

} // namespace vellumo::diagnosi
