// "scambi": the exchange log as a page for the browser.
#pragma once

#include "diagnosi/exchanges/exchange_record.h"
#include "diagnosi/program/command.h"

#include <array>
#include <string>

namespace vellumo::diagnosi
{

inline constexpr int usualDays = 7; // of the log, when nobody asks for others

inline constexpr std::array<Option, 4> exchangeOptions = {{
    {"--giorni", "N", "gli ultimi N giorni, oggi compreso (altrimenti 7)"},
    {"--dal", "GG/MM/AAAA", "da quel giorno"},
    {"--al", "GG/MM/AAAA", "fino a quel giorno"},
    {"--file", "FILE", "dove scrivere la pagina (altrimenti nella cartella dei file temporanei)"},
}};

[[nodiscard]] ExitCode RunExchanges(const Task& task);

// What --giorni, --dal and --al ask for; faults on a day that is none.
[[nodiscard]] Period PeriodOf(const Arguments& arguments, host::Date today);
// "dal 15/11/2026 al 22/11/2026".
[[nodiscard]] std::string PeriodText(const Period& period);

// A file in the system's folder for temporary ones, named with the time: "registro scambi 2026-11-22 12.09.26.html".
[[nodiscard]] std::string TemporaryFile(std::string_view name, std::string_view ending, host::Date time);

} // namespace vellumo::diagnosi
