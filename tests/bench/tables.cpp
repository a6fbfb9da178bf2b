// A regional table of a million rows, two columns of each read; against a loop that reads the file and splits it.
#include "environment/files.h"
#include "environment/siss_import_table.h"
#include "simulator/norda/ansi_file.h"
#include "simulator/norda/generated_data.h"
#include "tests/bench/measure.h"
#include "tests/bench/subjects.h"

#include <cstring>
#include <fstream>
#include <memory>

namespace vellumo::bench
{
namespace
{

constexpr std::size_t rows = 1000000;

std::size_t ReadOurs(const std::string& file)
{
    const environment::SISSImportTable table(environment::ReadFile(file).value());
    const auto code = table.Columns().Item("CD_APPLICATIVO").Index;
    const auto description = table.Columns().Item("DS_ESENZIONE_SISS").Index;
    std::size_t sum = 0;
    for (std::int32_t position = 1; position <= table.RowCount(); ++position)
    {
        const auto row = table.Item(position);
        sum += row.Bytes(code).size() + row.Bytes(description).size();
    }
    return sum;
}

std::size_t ReadBare(const std::string& file)
{
    std::ifstream in(file, std::ios::binary | std::ios::ate);
    const auto size = static_cast<std::size_t>(in.tellg());
    const std::unique_ptr<char[]> text(new char[size]);
    in.seekg(0);
    in.read(text.get(), static_cast<std::streamsize>(size));
    const char* const end = text.get() + size;
    const char* line = static_cast<const char*>(std::memchr(text.get(), '\n', size)) + 1; // behind the header
    std::size_t sum = 0;
    while (line < end)
    {
        const auto* const next =
            static_cast<const char*>(std::memchr(line, '\n', static_cast<std::size_t>(end - line)));
        const char* field = line;
        for (int column = 0; column < 3; ++column)
        {
            const auto* const bar =
                static_cast<const char*>(std::memchr(field, '|', static_cast<std::size_t>(next - field)));
            const std::string_view view(field, static_cast<std::size_t>(bar - field));
            sum += column == 0 ? 0 : view.size();
            field = bar + 1;
        }
        line = next + 1;
    }
    return sum;
}

} // namespace

bool MeasureTables(const std::filesystem::path& folder)
{
    const auto path = folder / "esenzioni.txt";
    norda::WriteAnsiFile(path, norda::MakeTable(norda::RegionalTable::Esenzioni, rows));
    const auto file = path.string();
    if (ReadOurs(file) != ReadBare(file))
    {
        throw std::runtime_error("the two ways of reading a table differ");
    }
    const auto comparison = Compare(
        "table of a million rows, two columns of each", "the file read and split with memchr into views", 51,
        [&] { Use(ReadOurs(file)); }, [&] { Use(ReadBare(file)); });
    const bool fast = Report(comparison, 1.3);
    const double memory = PeakMemory([&] { Use(ReadOurs(file)); });
    const bool small = Report("    its peak memory, in sizes of the file",
                              memory / static_cast<double>(std::filesystem::file_size(path)), "", 2);
    return fast && small;
}

} // namespace vellumo::bench
