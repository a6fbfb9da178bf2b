// What the library needs of the host's database: one row for each column that it reads or writes, in statements of its
// own or through the host's records. docs/host-contract.md shows the same rows, and a test compares the two; whoever
// checks an installation asks for the same.
#pragma once

#include <span>
#include <string_view>

namespace vellumo::host
{

enum class ColumnKind
{
    Number,       // whole or not, also identifiers
    Flag,         // a bit, or a number
    Text,         // of any length; blanks that fill it up do not count
    UnpaddedText, // of varying length: there a blank is one
    Date
};

struct ColumnNeed
{
    std::string_view table; // table or view; "Norda..X" is a shared one
    std::string_view column;
    ColumnKind kind;
    const char* use; // "read", "written" or "read, written"
    const char* by;  // "statement", or "record": through an object of the host, which may have it from elsewhere
};

// Ordered by table.
[[nodiscard]] std::span<const ColumnNeed> DatabaseContract();

// False for a column of a table that the library uses without it; True for tables that it does not know at all.
[[nodiscard]] bool MayUseColumn(std::string_view table, std::string_view column);

// As the document spells it: "number", "flag", "text", "unpadded text", "date".
[[nodiscard]] const char* NameOf(ColumnKind kind) noexcept;

} // namespace vellumo::host
