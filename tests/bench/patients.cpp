// The ten thousand known patients of a practice imported; against a bare ODBC program that runs the very same
// statements, with the same commits, and fetches the same rows.
#include "simulator/norda/generated_data.h"
#include "simulator/norda/odbc.h"
#include "simulator/norda/sql_dialect.h"
#include "tests/bench/measure.h"
#include "tests/bench/practice_run.h"
#include "tests/bench/subjects.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <stdexcept>
#include <vector>

namespace vellumo::bench
{
namespace
{

constexpr std::size_t citizens = 10000;
constexpr std::size_t sliceCitizens = 1000;
constexpr std::string_view begin = "BEGIN TRANSACTION";
constexpr std::string_view commit = "COMMIT TRANSACTION";

bool IsStatement(const std::string& sql)
{
    return sql != begin && sql != commit;
}

// One connection, statements one by one, values read as text: no more than it takes.
class BareProgram
{
public:
    BareProgram(const std::filesystem::path& folder, bool waitsForDisk)
        : m_environment(SQL_NULL_HANDLE)
    {
        SQLSetEnvAttr(m_environment.Get(), SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
        m_connection.emplace(m_environment.Get());
        auto text = "Driver=SQLite3;Database=" + (folder / "studio.db").string() + ";Timeout=10000;FKSupport=0";
        const auto opened = SQLDriverConnect(m_connection->Get(), nullptr, reinterpret_cast<SQLCHAR*>(text.data()),
                                             SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
        norda::odbc::Check(opened, SQL_HANDLE_DBC, m_connection->Get());
        Run("ATTACH DATABASE '" + (folder / "norda.db").string() + "' AS Norda");
        for (const auto* const name : {"main", "Norda"})
        {
            Run(std::string("PRAGMA ") + name + ".synchronous = " + (waitsForDisk ? "FULL" : "OFF"));
        }
    }
    ~BareProgram() { SQLDisconnect(m_connection->Get()); }
    BareProgram(const BareProgram&) = delete;
    BareProgram& operator=(const BareProgram&) = delete;

    void Replay(const std::vector<std::string>& statements)
    {
        for (const auto& sql : statements)
        {
            if (sql == begin)
            {
                SetAutocommit(SQL_AUTOCOMMIT_OFF);
            }
            else if (sql == commit)
            {
                const auto ended = SQLEndTran(SQL_HANDLE_DBC, m_connection->Get(), SQL_COMMIT);
                norda::odbc::Check(ended, SQL_HANDLE_DBC, m_connection->Get());
                SetAutocommit(SQL_AUTOCOMMIT_ON);
            }
            else
            {
                Run(sql);
            }
        }
    }

private:
    void SetAutocommit(SQLULEN mode)
    {
        SQLSetConnectAttr(m_connection->Get(), SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(mode), 0);
    }

    void Run(const std::string& sql)
    {
        const norda::odbc::Statement statement(m_connection->Get());
        auto* const text = reinterpret_cast<SQLCHAR*>(const_cast<char*>(sql.data()));
        norda::odbc::Check(SQLExecDirect(statement.Get(), text, static_cast<SQLINTEGER>(sql.size())), SQL_HANDLE_STMT,
                           statement.Get());
        SQLSMALLINT columns = 0;
        SQLNumResultCols(statement.Get(), &columns);
        while (columns > 0 && SQL_SUCCEEDED(SQLFetch(statement.Get())))
        {
            for (SQLSMALLINT column = 1; column <= columns; ++column)
            {
                std::array<char, 256> value{};
                SQLLEN length = 0;
                SQLGetData(statement.Get(), static_cast<SQLUSMALLINT>(column), SQL_C_CHAR, value.data(), value.size(),
                           &length);
                Use(static_cast<std::size_t>(length));
            }
        }
    }

    norda::odbc::Environment m_environment;
    std::optional<norda::odbc::Connection> m_connection;
};

void Import(const norda::Practice& practice, const std::filesystem::path& list, bool waitsForDisk)
{
    PracticeRun run(practice, list, waitsForDisk);
    if (!run.Provider().SincronizzaPazienti())
    {
        throw std::runtime_error("the import did not come to its end");
    }
}

// What an import of the patients, now known, sends; in SQLite's words, so that the bare program has no more to do.
std::vector<std::string> RecordStatements(const norda::Practice& practice, const std::filesystem::path& list)
{
    std::vector<std::string> statements;
    PracticeRun run(practice, list, false);
    run.Database().SetObserver([&](const std::string& sql)
                               { statements.push_back(IsStatement(sql) ? norda::ForSqlite(sql) : sql); });
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
        "the same statements and commits over ODBC alone", static_cast<int>(slices.size()) * times,
        [&] { Import(practice, slices[imported++ % slices.size()].list, waitsForDisk); },
        [&] { BareProgram(practice.Folder(), waitsForDisk).Replay(slices[replayed++ % slices.size()].statements); });
    return Report(comparison, 1.3);
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
        "10000 known patients in one list, not waiting for the disk", "the same statements and commits over ODBC alone",
        3, [&] { Import(practice, list, false); }, [&] { BareProgram(practice.Folder(), false).Replay(statements); }));
    return good;
}

} // namespace vellumo::bench
