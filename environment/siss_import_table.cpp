#include "environment/siss_import_table.h"

#include "environment/ansi_text.h"
#include "host/fault.h"
#include "host/text.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace vellumo::environment
{
namespace
{

constexpr char separator = '|';
constexpr std::string_view lineEnd = "\r\n";

bool IsBlank(std::string_view line)
{
    return line.find_first_not_of(' ') == std::string_view::npos;
}

} // namespace

const SISSImportTableCol* SISSImportTableCols::Find(std::string_view name) const
{
    const auto place = m_places.find(host::WithoutCase(name));
    return place == m_places.end() ? nullptr : &m_columns[place->second];
}

void SISSImportTableCols::Add(std::string_view name)
{
    if (!m_places.try_emplace(host::WithoutCase(name), m_columns.size()).second)
    {
        throw host::Fault("La colonna \"" + std::string(name) + "\" è presente due volte nella tabella.");
    }
    m_columns.push_back({std::string(name), static_cast<std::int32_t>(m_columns.size() + 1)});
}

const SISSImportTableCol& SISSImportTableCols::Item(std::string_view name) const
{
    if (const auto* column = Find(name))
    {
        return *column;
    }
    throw host::Fault("La tabella non ha la colonna \"" + std::string(name) + "\".");
}

const SISSImportTableCol& SISSImportTableCols::Item(std::size_t position) const
{
    if (position < 1 || position > m_columns.size())
    {
        throw host::Fault("La tabella non ha la colonna richiesta.");
    }
    return m_columns[position - 1];
}

std::string SISSImportTableRow::Field(std::string_view name) const
{
    const auto* column = m_columns.Find(name);
    return column == nullptr ? std::string() : Field(column->Index);
}

std::string SISSImportTableRow::Field(std::int32_t index) const
{
    return FromAnsi(Bytes(index));
}

std::string_view SISSImportTableRow::Bytes(std::int32_t index) const noexcept
{
    if (index < 1)
    {
        return {};
    }
    std::size_t start = 0;
    for (std::int32_t column = 1; column < index; ++column)
    {
        const auto bar = m_line.find(separator, start);
        if (bar == std::string_view::npos)
        {
            return {};
        }
        start = bar + 1;
    }
    const auto value = m_line.substr(start, m_line.find(separator, start) - start);
    return value == "\\N" || value == "\\n" ? std::string_view() : value;
}

SISSImportTable::SISSImportTable(std::string bytes)
    : m_bytes(std::move(bytes))
{
    if (m_bytes.empty())
    {
        throw host::Fault("La tabella è vuota.");
    }
    if (m_bytes.size() > std::numeric_limits<std::uint32_t>::max())
    {
        throw host::Fault("La tabella è troppo grande.");
    }
    const std::string_view text = m_bytes;
    std::size_t start = 0;
    bool isHeader = true;
    while (start <= text.size())
    {
        const auto end = std::min(text.find(lineEnd, start), text.size());
        const auto line = text.substr(start, end - start);
        if (isHeader)
        {
            for (std::size_t name = 0; name <= line.size();)
            {
                const auto bar = std::min(line.find(separator, name), line.size());
                m_columns.Add(FromAnsi(line.substr(name, bar - name)));
                name = bar + 1;
            }
            isHeader = false;
        }
        else if (!IsBlank(line))
        {
            m_rows.push_back({static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(line.size())});
        }
        start = end + lineEnd.size();
    }
}

SISSImportTableRow SISSImportTable::Item(std::int32_t position) const
{
    if (position < 1 || position > RowCount())
    {
        throw host::Fault("La tabella non ha la riga richiesta.");
    }
    const Line& line = m_rows[static_cast<std::size_t>(position) - 1];
    return {m_columns, std::string_view(m_bytes).substr(line.start, line.length)};
}

} // namespace vellumo::environment
