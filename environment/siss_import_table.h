// A regional table as the SISS client leaves it: 8-bit text, lines ending in CR LF, values separated by "|", the
// first line naming the columns. No quoting and no escaping. "\N" and "\n" (a backslash and the letter) are null.
//
// The table keeps the text as read and, for each row, where its line stands; values are cut out when they are asked
// for. A table of a million rows thus costs little more than its file, in memory and in time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vellumo::environment
{

struct SISSImportTableCol
{
    std::string Name;
    std::int32_t Index = 0; // position in the header, from 1
};

// The columns in header order; names compare without regard to case.
class SISSImportTableCols
{
public:
    // Gives the column the next `Index`. Faults when there is a column of that name already.
    void Add(std::string_view name);

    [[nodiscard]] std::size_t Count() const noexcept { return m_columns.size(); }
    // By name, or by position from 1. Faults when there is no such column.
    [[nodiscard]] const SISSImportTableCol& Item(std::string_view name) const;
    [[nodiscard]] const SISSImportTableCol& Item(std::size_t position) const;
    // Null when there is no such column.
    [[nodiscard]] const SISSImportTableCol* Find(std::string_view name) const;

    [[nodiscard]] auto begin() const noexcept { return m_columns.begin(); }
    [[nodiscard]] auto end() const noexcept { return m_columns.end(); }

private:
    std::vector<SISSImportTableCol> m_columns;
    // In `m_columns`, by the name without case. A table whose lines do not end in CR LF is all header, with hundred
    // thousands of columns.
    std::unordered_map<std::string, std::size_t> m_places;
};

// One row; valid as long as its table.
class SISSImportTableRow
{
public:
    SISSImportTableRow(const SISSImportTableCols& columns, std::string_view line)
        : m_columns(columns)
        , m_line(line)
        , m_rest(line)
    {
    }

    // The value in UTF-8 as it stands, not trimmed; "" for null, for an unknown column and for a row that is too short.
    [[nodiscard]] std::string Field(std::string_view name) const;
    // The same by the column's `Index`, for a caller that reads many rows; 0 reads as "".
    [[nodiscard]] std::string Field(std::int32_t index) const;
    // The same as the file has it, 8-bit, without a copy; valid as long as the table.
    [[nodiscard]] std::string_view Bytes(std::int32_t index) const noexcept;

private:
    const SISSImportTableCols& m_columns;
    std::string_view m_line;
    // Values are mostly asked for from left to right: what is behind the last one, and the column that begins there.
    mutable std::string_view m_rest;
    mutable std::int32_t m_next = 1;
};

class SISSImportTable
{
public:
    // Takes the whole text of a table file (8-bit). Faults when it has no header line, names a column twice or is
    // larger than 4 GB.
    explicit SISSImportTable(std::string_view text);
    // Reads the file; empty when it cannot be opened or read, has more than 4 GB or does not fit into the memory.
    // Faults as above.
    [[nodiscard]] static std::optional<SISSImportTable> FromFile(std::string_view path);

    [[nodiscard]] const SISSImportTableCols& Columns() const noexcept { return m_columns; }
    [[nodiscard]] std::int32_t RowCount() const noexcept { return static_cast<std::int32_t>(m_rows.size()); }
    // Rows count from 1. Faults outside.
    [[nodiscard]] SISSImportTableRow Item(std::int32_t position) const;

private:
    struct Line
    {
        std::uint32_t start;
        std::uint32_t length;
    };

    SISSImportTable() = default;
    void TakeLine(std::size_t start, std::size_t length);

    std::unique_ptr<char[]> m_text;
    SISSImportTableCols m_columns; // none as long as the header has not been taken
    std::vector<Line> m_rows;
};

} // namespace vellumo::environment
