// A regional table of a million rows, counted, two columns of each read; against loops that read the file, count its
// rows and split them.
#include "environment/siss_import_table.h"
#include "simulator/norda/ansi_file.h"
#include "simulator/norda/generated_data.h"
#include "tests/bench/measure.h"
#include "tests/bench/subjects.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string_view>

namespace vellumo::bench
{
namespace
{

constexpr std::size_t rows = 1000000;

// What whoever imports a table needs of it: how many rows there are, which the progress window tells with the first
// one, and two values of each row.
struct Seen
{
    std::int32_t rows = 0;
    std::size_t characters = 0;
    bool operator==(const Seen&) const = default;
};

Seen ReadOurs(const std::string& file)
{
    const auto table = environment::SISSImportTable::FromFile(file).value();
    const auto code = table.Columns().Item("CD_APPLICATIVO").Index;
    const auto description = table.Columns().Item("DS_ESENZIONE_SISS").Index;
    Seen seen{.rows = table.RowCount()};
    for (std::int32_t position = 1; position <= table.RowCount(); ++position)
    {
        const auto row = table.Item(position);
        seen.characters += row.Bytes(code).size() + row.Bytes(description).size();
    }
    return seen;
}

// The place behind the line that begins here; the line itself without its CR LF.
const char* TakeLine(const char* begin, const char* end, std::string_view& line)
{
    const auto length = static_cast<std::size_t>(end - begin);
    const auto* feed = static_cast<const char*>(std::memchr(begin, '\n', length));
    while (feed != nullptr && (feed == begin || feed[-1] != '\r'))
    {
        ++feed;
        feed = static_cast<const char*>(std::memchr(feed, '\n', static_cast<std::size_t>(end - feed)));
    }
    line = feed == nullptr ? std::string_view(begin, length)
                           : std::string_view(begin, static_cast<std::size_t>(feed - 1 - begin));
    return feed == nullptr ? end : feed + 1;
}

bool IsRow(std::string_view line)
{
    return line.find_first_not_of(' ') != std::string_view::npos;
}

std::string_view TakeValue(std::string_view& line)
{
    const auto bar = std::min(line.find('|'), line.size());
    const auto value = line.substr(0, bar);
    line.remove_prefix(std::min(bar + 1, line.size()));
    return value == "\\N" || value == "\\n" ? std::string_view() : value;
}

Seen ReadBare(const std::string& file)
{
    std::ifstream in(file, std::ios::binary | std::ios::ate);
    const auto size = static_cast<std::size_t>(in.tellg());
    const std::unique_ptr<char[]> text(new char[size]);
    in.seekg(0);
    in.read(text.get(), static_cast<std::streamsize>(size));
    const char* const end = text.get() + size;
    std::string_view line;
    const char* const behindHeader = TakeLine(text.get(), end, line);
    Seen seen;
    for (const char* at = behindHeader; at < end;)
    {
        at = TakeLine(at, end, line);
        seen.rows += IsRow(line) ? 1 : 0;
    }
    for (const char* at = behindHeader; at < end;)
    {
        at = TakeLine(at, end, line);
        if (IsRow(line))
        {
            TakeValue(line);
            seen.characters += TakeValue(line).size();
            seen.characters += TakeValue(line).size();
        }
    }
    return seen;
}

} // namespace

bool MeasureTables(const std::filesystem::path& folder)
{
    const auto path = folder / "esenzioni.txt";
    norda::WriteAnsiFile(path, norda::MakeTable(norda::RegionalTable::Esenzioni, rows));
    const auto file = path.string();
    if (!(ReadOurs(file) == ReadBare(file)))
    {
        throw std::runtime_error("the two ways of reading a table differ");
    }
    const auto comparison = Compare(
        "table of a million rows, two columns of each", "the file read, its rows counted and split into views", 51,
        [&] { Use(ReadOurs(file).characters); }, [&] { Use(ReadBare(file).characters); });
    const bool fast = Report(comparison, 1.15);
    const double memory = PeakMemory([&] { Use(ReadOurs(file).characters); });
    const bool small = Report("    its peak memory, in sizes of the file",
                              memory / static_cast<double>(std::filesystem::file_size(path)), "", 2);
    return fast && small;
}

} // namespace vellumo::bench
