#include "environment/siss_import_table.h"

#include "environment/ansi_text.h"
#include "environment/files.h"
#include "host/fault.h"
#include "host/text.h"

#include <algorithm>
#include <limits>
#include <new>
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

// The lines of a text that is still coming in.
class ComingLines
{
public:
    explicit ComingLines(const char* text)
        : m_text(text)
    {
    }

    // `size` bytes have come so far. `take` is told start and length of each line that is new and whole.
    template <class TakeLine>
    void Take(std::size_t size, bool isWhole, const TakeLine& take)
    {
        const std::string_view text(m_text, size);
        for (;;)
        {
            auto end = text.find(lineEnd, m_searched);
            if (end == std::string_view::npos)
            {
                m_searched = std::max(m_start, size - 1); // the pair may have come by half
                if (!isWhole)
                {
                    return;
                }
                end = size;
            }
            take(m_start, end - m_start);
            if (end == size)
            {
                return;
            }
            m_start = m_searched = end + lineEnd.size();
        }
    }

private:
    const char* m_text;
    std::size_t m_start = 0; // of the line that comes next
    std::size_t m_searched = 0;
};

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
    if (index < m_next)
    {
        m_next = 1;
        m_rest = m_line;
    }
    std::string_view value;
    for (; m_next <= index; ++m_next)
    {
        if (m_rest.empty())
        {
            return {};
        }
        const auto bar = std::min(m_rest.find(separator), m_rest.size());
        value = m_rest.substr(0, bar);
        m_rest.remove_prefix(std::min(bar + 1, m_rest.size()));
    }
    return value == "\\N" || value == "\\n" ? std::string_view() : value;
}

SISSImportTable::SISSImportTable(std::string_view text)
    : m_text(std::make_unique_for_overwrite<char[]>(text.size()))
{
    if (text.empty())
    {
        throw host::Fault("La tabella è vuota.");
    }
    if (text.size() > std::numeric_limits<std::uint32_t>::max())
    {
        throw host::Fault("La tabella è troppo grande.");
    }
    text.copy(m_text.get(), text.size());
    ComingLines(m_text.get())
        .Take(text.size(), true, [&](std::size_t start, std::size_t length) { TakeLine(start, length); });
}

// Each piece is looked at while the processor still has it at hand; a large table would have to come from the memory
// once more.
std::optional<SISSImportTable> SISSImportTable::FromFile(std::string_view path)
{
    constexpr std::size_t piece = 262144;
    FileReader file(path);
    const auto size = file.Size();
    SISSImportTable table;
    table.m_text.reset(size ? new (std::nothrow) char[*size] : nullptr);
    if (table.m_text == nullptr)
    {
        return std::nullopt;
    }
    ComingLines lines(table.m_text.get());
    std::size_t read = 0;
    for (bool isWhole = false; !isWhole;)
    {
        const auto wanted = std::min(piece, *size - read);
        const auto count = file.Read(table.m_text.get() + read, wanted);
        if (!count)
        {
            return std::nullopt;
        }
        read += *count;
        isWhole = read == *size || *count < wanted;
        if (read == 0)
        {
            throw host::Fault("La tabella è vuota.");
        }
        lines.Take(read, isWhole, [&](std::size_t start, std::size_t length) { table.TakeLine(start, length); });
        if (read == *count) // the first piece: room for as many rows as there will be if they go on like this
        {
            table.m_rows.reserve(table.m_rows.size() * (*size / read));
        }
    }
    return table;
}

void SISSImportTable::TakeLine(std::size_t start, std::size_t length)
{
    const std::string_view line(m_text.get() + start, length);
    if (m_columns.Count() == 0)
    {
        for (std::size_t name = 0; name <= line.size();)
        {
            const auto bar = std::min(line.find(separator, name), line.size());
            m_columns.Add(FromAnsi(line.substr(name, bar - name)));
            name = bar + 1;
        }
    }
    else if (!IsBlank(line))
    {
        m_rows.push_back({static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(length)});
    }
}

SISSImportTableRow SISSImportTable::Item(std::int32_t position) const
{
    if (position < 1 || position > RowCount())
    {
        throw host::Fault("La tabella non ha la riga richiesta.");
    }
    const Line& line = m_rows[static_cast<std::size_t>(position) - 1];
    return {m_columns, {m_text.get() + line.start, line.length}};
}

} // namespace vellumo::environment
