// All rows of all tables at one moment, and what differs between two moments.
#pragma once

#include "host/text.h"
#include "simulator/norda/database.h"

#include <compare>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::norda
{

// As in a row of the database: days as 2024-01-31, with " 09:30:00" behind when there is a time of day, "now" for a
// moment within the last quarter of an hour, "NULL".
[[nodiscard]] std::string ValueText(const host::Value& value);

// A row's texts by column, without the key, as `ValueText` writes them.
using RowTexts = std::map<std::string, std::string>;

struct RowId
{
    std::string table; // "Norda..Comune" for those of the shared database
    int key = 0;       // of the first column

    auto operator<=>(const RowId&) const = default; // NOLINT(modernize-use-nullptr)
};

using Snapshot = std::map<RowId, RowTexts>;

[[nodiscard]] Snapshot TakeSnapshot(Database& database);

// Where the host keeps the lines of its journal of service errors, which are no data of the practice.
inline constexpr std::string_view journalTable = "GiornaleServizi";

struct RowChange
{
    std::string kind; // "added", "changed" or "removed"
    RowId row;
    RowTexts texts; // of an added row all that are not NULL, of a changed one the new texts

    [[nodiscard]] bool IsJournalLine() const { return row.table == journalTable; }
    // "changed Paziente 2", "Cognome = Rossi", …; without the key of an added row.
    [[nodiscard]] std::vector<std::string> Texts() const;
    // The same in one line: "changed Paziente 2 | Cognome = Rossi".
    [[nodiscard]] std::string Text() const { return host::Joined(Texts(), " | "); }
};

[[nodiscard]] std::vector<RowChange> Compare(const Snapshot& before, const Snapshot& after);

} // namespace vellumo::norda
