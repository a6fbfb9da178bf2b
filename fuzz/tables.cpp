// The index of the regional tables and the table of exemptions through `Sincronizza`, held against lines split at each
// "|" without any cleverness. An input is the index, and behind a line "%%" the table; the file of each table that the
// index names "esenzioni" is the latter.
#include "environment/ansi_text.h"
#include "environment/siss_date_time.h"
#include "environment/siss_environment.h"
#include "environment/table_synchronisation.h"
#include "fuzz/kept_practice.h"
#include "fuzz/oracle.h"
#include "host/path.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

namespace vellumo::fuzz
{
namespace
{

constexpr std::string_view separator = "\n%%\n";

using Fields = std::vector<std::string>;

std::string Lower(std::string text)
{
    for (char& character : text)
    {
        character = character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character;
    }
    return text;
}

// All rows as texts, and where the named columns are.
class Table
{
public:
    explicit Table(const std::string& bytes)
    {
        for (const auto& line : Split(bytes, "\r\n"))
        {
            if (m_names.empty())
            {
                for (const auto& name : Split(line, "|"))
                {
                    const auto lower = Lower(environment::FromAnsi(name));
                    m_isGood = m_isGood && std::find(m_names.begin(), m_names.end(), lower) == m_names.end();
                    m_names.push_back(lower);
                }
            }
            else if (line.find_first_not_of(' ') != std::string::npos)
            {
                m_rows.push_back(Split(line, "|"));
            }
        }
        m_isGood = m_isGood && !bytes.empty();
    }

    [[nodiscard]] bool IsGood() const { return m_isGood; }
    [[nodiscard]] const std::vector<Fields>& Rows() const { return m_rows; }
    [[nodiscard]] std::string Text(const Fields& row, const char* name) const
    {
        const auto place =
            static_cast<std::size_t>(std::find(m_names.begin(), m_names.end(), Lower(name)) - m_names.begin());
        const bool isThere = place < m_names.size() && place < row.size() && row[place] != "\\N" && row[place] != "\\n";
        return isThere ? environment::FromAnsi(row[place]) : "";
    }

private:
    bool m_isGood = true;
    Fields m_names;
    std::vector<Fields> m_rows;
};

// A file name of the index that leads into another folder, or back from it, is for the file system to understand.
bool LeadsElsewhere(const Table& index)
{
    return std::ranges::any_of(index.Rows(), [&](const Fields& row)
                               { return index.Text(row, "DS_NOME_FILE").find_first_of("/\\") != std::string::npos; });
}

// A table of the practice, overwritten by each input: to open and close a file takes longer than all else.
class KeptTable
{
public:
    KeptTable(const KeptPractice& practice, const std::string& name)
    {
        const auto& installation = practice.parts.installation;
        installation.WriteTable(name, "");
        m_file = open(host::NativePath(installation.Path(tests::Installation::TableName(name))).c_str(), O_WRONLY);
        Require(m_file >= 0, "a table can be opened");
    }

    void Write(const std::string& bytes) const
    {
        const auto size = static_cast<ssize_t>(bytes.size());
        Require(pwrite(m_file, bytes.data(), bytes.size(), 0) == size && ftruncate(m_file, size) == 0,
                "a table can be written");
    }

private:
    int m_file; // open as long as the program runs
};

// What a synchronisation asks and writes, in order, a line each.
using Course = std::vector<std::string>;

std::string DateText(const std::string& text)
{
    return environment::ConvertSissDateTime(text).ToSissText();
}

Course Expected(const Table& master, const std::string& table)
{
    Course course;
    std::vector<std::string> seen;
    for (const auto& row : master.IsGood() ? master.Rows() : std::vector<Fields>())
    {
        const auto name = master.Text(row, "ID_CENTRALE");
        const bool isNew = std::find(seen.begin(), seen.end(), Lower(name)) == seen.end();
        seen.push_back(Lower(name));
        const Table exemptions(table);
        if (name != "ESENZIONI" || !isNew || master.Text(row, "DS_NOME_FILE") != "esenzioni" || !exemptions.IsGood())
        {
            continue;
        }
        for (const auto& exemption : exemptions.Rows())
        {
            course.push_back("asked " + exemptions.Text(exemption, "CD_APPLICATIVO"));
            course.push_back("stored " + DateText(exemptions.Text(exemption, "DT_INIZIO_VALIDITA")) + ' ' +
                             DateText(exemptions.Text(exemption, "DT_FINE_VALIDITA")));
        }
    }
    return course;
}

Course Synchronise(KeptPractice& practice)
{
    Course course;
    practice.Renew();
    practice.parts.utils->tableDate = host::Date::FromCalendar(9999, 12, 31).value();
    practice.parts.utils->valueOf = [&](const std::string&, const host::Parameters& parameters)
    {
        course.push_back("asked " + parameters.at(0).ToText());
        return host::Value(std::int32_t{11});
    };
    practice.parts.utils->rowWritten = [&](const std::string&, const std::vector<host::ColumnValue>& columns)
    { course.push_back("stored " + columns.at(1).value.ToText() + ' ' + columns.at(2).value.ToText()); };
    environment::SISSEnvironment environment(practice.parts.installation.settings, practice.parts.installation.clock);
    const bool done =
        environment::TableSynchronisation(practice.parts.services, environment, practice.parts.installation.settings,
                                          practice.parts.desktop, [](const std::string&, const std::exception&) {})
            .Run();
    Require(done, "a synchronisation comes to its end");
    return course;
}

} // namespace
} // namespace vellumo::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace vellumo;
    using namespace vellumo::fuzz;
    static KeptPractice practice;
    static const KeptTable indexFile(practice, "master");
    static const KeptTable tableFile(practice, "esenzioni");
    const auto input = View(data, size);
    const std::string index(input.substr(0, input.find(separator)));
    const std::string table(input.substr(std::min(input.size(), index.size() + separator.size())));
    const Table master(index);
    if (LeadsElsewhere(master))
    {
        return 0;
    }
    indexFile.Write(index);
    tableFile.Write(table);
    const auto expected = Expected(master, table);
    const auto course = Synchronise(practice);
    Require(course.size() == expected.size(), "how many rows are taken");
    for (std::size_t at = 0; at < course.size(); ++at)
    {
        RequireSame(course[at], expected[at], "a row");
    }
    return 0;
}
