// The ten thousand known patients of a practice imported; against a bare program that reads the list with libxml2 and
// has the host's connection run the very same statements, with the same commits, and fetch the same rows.
#include "simulator/norda/generated_data.h"
#include "tests/bench/measure.h"
#include "tests/bench/practice_run.h"
#include "tests/bench/subjects.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace vellumo::bench
{
namespace
{

constexpr std::size_t citizens = 10000;
constexpr std::size_t sliceCitizens = 1000;
constexpr std::string_view begin = "BEGIN TRANSACTION";
constexpr std::string_view commit = "COMMIT TRANSACTION";
constexpr const char* against = "libxml2 reading the list, the same statements and commits";

bool IsStatement(const std::string& sql)
{
    return sql != begin && sql != commit;
}

// What any program does with a list, however it goes about it: the XML engine reads it, and each text is taken out of
// it.
void ReadList(const std::filesystem::path& list)
{
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
        xmlReadFile(list.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_HUGE), &xmlFreeDoc);
    for (const xmlNode* citizen = xmlFirstElementChild(xmlDocGetRootElement(document.get())); citizen != nullptr;
         citizen = citizen->next)
    {
        for (const xmlNode* element = citizen->children; element != nullptr; element = element->next)
        {
            if (element->type == XML_ELEMENT_NODE)
            {
                const std::unique_ptr<xmlChar, decltype(xmlFree)> text(xmlNodeGetContent(element), xmlFree);
                Use(static_cast<std::size_t>(xmlStrlen(text.get())));
            }
        }
    }
}

// The list read, and what the host's database has to do for it.
void ImportBare(const norda::Practice& practice, const std::filesystem::path& list,
                const std::vector<std::string>& statements, bool waitsForDisk)
{
    ReadList(list);
    const auto database = OpenDatabase(practice, waitsForDisk);
    for (const auto& sql : statements)
    {
        if (sql == begin)
        {
            database->BeginTransaction();
        }
        else if (sql == commit)
        {
            database->CommitTransaction();
        }
        else
        {
            for (const auto rows = database->Open(sql); !rows->IsAtEnd(); rows->MoveNext())
            {
                for (std::size_t column = 0; column < rows->ColumnCount(); ++column)
                {
                    Use(rows->Read(column).IsNull() ? 0 : 1);
                }
            }
        }
    }
}

void Import(const norda::Practice& practice, const std::filesystem::path& list, bool waitsForDisk)
{
    PracticeRun run(practice, list, waitsForDisk);
    if (!run.Provider().SincronizzaPazienti())
    {
        throw std::runtime_error("the import did not come to its end");
    }
}

// What an import of the patients, now known, sends.
std::vector<std::string> RecordStatements(const norda::Practice& practice, const std::filesystem::path& list)
{
    std::vector<std::string> statements;
    PracticeRun run(practice, list, false);
    run.Database().SetObserver([&](const std::string& sql) { statements.push_back(sql); });
    if (!run.Provider().SincronizzaPazienti())
    {
        throw std::runtime_error("the import did not come to its end");
    }
    return statements;
}

struct Slice
{
    std::filesystem::path list;
    std::vector<std::string> statements;
};

// A machine's speed and a disk's moods change within seconds; compared a slice at a time, both sides meet the same
// ones.
bool CompareSlices(const norda::Practice& practice, const std::vector<Slice>& slices, int times, bool waitsForDisk)
{
    std::size_t imported = 0;
    std::size_t replayed = 0;
    const auto comparison = Compare(
        std::string("10000 known patients by thousands, ") + (waitsForDisk ? "on disk" : "not waiting for the disk"),
        against, static_cast<int>(slices.size()) * times,
        [&] { Import(practice, slices[imported++ % slices.size()].list, waitsForDisk); },
        [&]
        {
            const Slice& slice = slices[replayed++ % slices.size()];
            ImportBare(practice, slice.list, slice.statements, waitsForDisk);
        });
    return Report(comparison, 1.15);
}

} // namespace

bool MeasurePatients(const std::filesystem::path& folder)
{
    const norda::Practice practice(folder / "practice");
    practice.Create();
    const auto list = folder / "elenco.xml";
    norda::WritePatientList(list, citizens);
    Import(practice, list, false); // now all are known
    const auto statements = RecordStatements(practice, list);
    const auto count = static_cast<double>(std::count_if(statements.begin(), statements.end(), IsStatement));
    bool good = Report("statements for each patient that is known", count / citizens, "", 8);
    std::printf("    %zu patients; beside them %zu transactions\n", citizens,
                static_cast<std::size_t>(std::count(statements.begin(), statements.end(), begin)));

    std::vector<Slice> slices;
    for (std::size_t first = 1; first < citizens; first += sliceCitizens)
    {
        const auto slice = folder / ("elenco" + std::to_string(first) + ".xml");
        norda::WritePatientList(slice, sliceCitizens, first);
        slices.push_back({slice, RecordStatements(practice, slice)});
    }
    good = CompareSlices(practice, slices, 2, true) && good;
    good = CompareSlices(practice, slices, 4, false) && good;
    // Too long for as many pairs; so the machine has a say in it, and it is told without a bound.
    Tell(Compare(
        "10000 known patients in one list, not waiting for the disk", against, 3,
        [&] { Import(practice, list, false); }, [&] { ImportBare(practice, list, statements, false); }));
    return good;
}

} // namespace vellumo::bench
