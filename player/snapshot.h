// All rows of all tables at one moment, and what differs between two moments.
#pragma once

#include "simulator/norda/database.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::player
{

// A row's texts by column, as `ValueText` writes them.
using RowTexts = std::map<std::string, std::string>;

struct TableTexts
{
    std::vector<std::string> columns; // the first is the key
    std::map<int, RowTexts> rows;     // by key
};

using Snapshot = std::map<std::string, TableTexts>; // by table name, "Norda..Comune" for those of the shared database

[[nodiscard]] Snapshot TakeSnapshot(norda::Database& database);

// Where the host keeps the lines of its journal of service errors, which are no data of the practice.
inline constexpr std::string_view journalTable = "GiornaleServizi";

struct RowChange
{
    enum class Kind
    {
        Added,
        Changed,
        Removed
    };
    Kind kind = Kind::Changed;
    std::string table;
    int key = 0;
    RowTexts texts; // of an added row all that are not NULL (without the key), of a changed one the new texts

    [[nodiscard]] bool IsJournalLine() const { return table == journalTable; }
    // "changed Paziente 2: Cognome = Rossi, …"
    [[nodiscard]] std::string Text() const;
};

[[nodiscard]] std::vector<RowChange> Compare(const Snapshot& before, const Snapshot& after);

} // namespace vellumo::player
