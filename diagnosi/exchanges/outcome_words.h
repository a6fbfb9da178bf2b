// An outcome as support staff read it, in Italian.
#pragma once

#include "diagnosi/exchanges/exchange_record.h"

#include <string>
#include <vector>

namespace vellumo::diagnosi
{

struct OutcomeWords
{
    std::string chip; // "Rifiutata"
    std::string said; // in a line: code and text of SISS, what it gave, or what is known otherwise
    // What it means and what to do, paragraph by paragraph; a code that is known follows from its table.
    std::vector<std::string> advice;
};

[[nodiscard]] OutcomeWords WordsOf(const Call& call);

// "Identificazione di un cittadino".
[[nodiscard]] std::string TitleOf(Operation::Kind kind);

// Why a folder without prescriptions can be right, a sentence each; what an empty folder means.
[[nodiscard]] std::vector<std::string> ReasonsForNoPrescriptions();
[[nodiscard]] std::string ReasonForNoCalls();

// "2 operazioni, 5 chiamate, 1 da guardare".
[[nodiscard]] std::string SummaryOf(const ExchangeRecord& record);

// "22/11/2026 12:09:26"; "" for the zero date.
[[nodiscard]] std::string TimeText(host::Date time);

} // namespace vellumo::diagnosi
