#include "diagnosi/checks/database_checks.h"

#include "diagnosi/checks/database_columns.h"
#include "host/database_contract.h"
#include "host/fault.h"
#include "host/text.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace vellumo::diagnosi
{
namespace
{

using host::ColumnKind;
using host::ColumnNeed;

constexpr std::string_view sharedPrefix = "Norda..";

enum class Family
{
    Unknown,
    Number,
    Text,
    PaddedText,
    Date,
    Other
};

struct FamilyRow
{
    std::string_view start; // of the type's name in lower case
    Family family;
};

// The first that fits.
constexpr std::array<FamilyRow, 19> families = {{
    {"int", Family::Number},         {"bigint", Family::Number},   {"smallint", Family::Number},
    {"tinyint", Family::Number},     {"bit", Family::Number},      {"decimal", Family::Number},
    {"numeric", Family::Number},     {"money", Family::Number},    {"smallmoney", Family::Number},
    {"float", Family::Number},       {"real", Family::Number},     {"varchar", Family::Text},
    {"nvarchar", Family::Text},      {"text", Family::Text},       {"ntext", Family::Text},
    {"nchar", Family::PaddedText},   {"char", Family::PaddedText}, {"date", Family::Date},
    {"smalldatetime", Family::Date},
}};

Family FamilyOf(const std::string& type)
{
    const auto name = host::WithoutCase(type);
    const auto* const row =
        std::ranges::find_if(families, [&](const FamilyRow& one) { return name.starts_with(one.start); });
    return name.empty() ? Family::Unknown : row == families.end() ? Family::Other : row->family;
}

const char* ItalianNameOf(ColumnKind kind)
{
    switch (kind)
    {
    case ColumnKind::Number:
        return "un numero";
    case ColumnKind::Flag:
        return "un sì/no (bit)";
    case ColumnKind::Text:
        return "un testo";
    case ColumnKind::UnpaddedText:
        return "un testo di lunghezza variabile";
    case ColumnKind::Date:
        return "una data";
    }
    return "";
}

// Numbers and dates may be texts, as far as these can be read; blanks at the end of a text do not count.
State Compare(ColumnKind kind, Family family)
{
    const bool isText = family == Family::Text || family == Family::PaddedText;
    switch (kind)
    {
    case ColumnKind::Number:
    case ColumnKind::Flag:
        return family == Family::Number ? State::Ok : isText ? State::Attention : State::Error;
    case ColumnKind::Date:
        return family == Family::Date ? State::Ok : isText ? State::Attention : State::Error;
    case ColumnKind::Text:
        return isText ? State::Ok : State::Error;
    case ColumnKind::UnpaddedText:
        return family == Family::Text ? State::Ok : State::Error;
    }
    return State::Ok;
}

class Comparison
{
public:
    explicit Comparison(const Databases& databases)
        : m_practice(databases.practice)
    {
        if (!databases.shared.empty())
        {
            m_shared.emplace(databases.shared);
        }
    }

    [[nodiscard]] Finding Run()
    {
        for (const ColumnNeed& need : host::DatabaseContract())
        {
            Compare(need);
        }
        if (std::ranges::all_of(m_tables, [](const auto& table) { return table.second.empty(); }))
        {
            return {State::Error, "Nel database della connessione non c'è nessuna delle tabelle del programma.",
                    "Controllare la stringa di connessione: deve nominare il database dello studio."};
        }
        return m_findings.Sum("Le " + std::to_string(m_tables.size()) +
                              " tabelle e viste hanno tutte le colonne che servono, dei tipi giusti.");
    }

private:
    void Compare(const ColumnNeed& need)
    {
        const std::string table(need.table);
        const auto& columns = ColumnsOf(need.table);
        if (columns.empty())
        {
            m_findings.Add({State::Error, "La tabella o vista " + table + " non c'è.", ask});
            return;
        }
        const auto found = std::ranges::find_if(columns, [&](const DatabaseColumn& column)
                                                { return host::EqualsIgnoringCase(column.name, need.column); });
        const std::string name = table + "." + std::string(need.column);
        if (found == columns.end())
        {
            const bool isOurs = std::string_view(need.by) == "statement";
            m_findings.Add(
                {isOurs ? State::Error : State::Attention,
                 "La colonna " + name + " non c'è" +
                     (isOurs ? "." : "; la legge l'oggetto del programma, che può averla da un'altra parte."),
                 ask});
            return;
        }
        const Family family = FamilyOf(found->type);
        const State state = family == Family::Unknown ? State::Ok : diagnosi::Compare(need.kind, family);
        if (state != State::Ok)
        {
            m_findings.Add({state,
                            "La colonna " + name + " è di tipo " + found->type + "; dovrebbe essere " +
                                ItalianNameOf(need.kind) + ".",
                            ask});
        }
    }

    const std::vector<DatabaseColumn>& ColumnsOf(std::string_view table)
    {
        const auto [place, isNew] = m_tables.try_emplace(std::string(table));
        if (isNew)
        {
            const bool isShared = table.starts_with(sharedPrefix);
            const auto name = isShared ? table.substr(sharedPrefix.size()) : table;
            place->second =
                isShared && m_shared ? m_shared->Of("", name) : m_practice.Of(isShared ? "Norda" : "", name);
        }
        return place->second;
    }

    static constexpr const char* ask = "Mandare questo testo a chi fornisce il programma di cartella clinica: il suo "
                                       "database non è quello che Vellumo "
                                       "si aspetta (forse manca un aggiornamento).";

    DatabaseColumns m_practice;
    std::optional<DatabaseColumns> m_shared;
    std::map<std::string, std::vector<DatabaseColumn>> m_tables;
    Findings m_findings;
};

} // namespace

Finding CheckDatabase(const Machine& machine)
{
    if (machine.databases.practice.empty())
    {
        return {State::Ok, "Non controllato: serve la stringa di connessione (ODBC)."};
    }
    try
    {
        return Comparison(machine.databases).Run();
    }
    catch (const host::Fault& fault)
    {
        return {State::Error, "Il database non risponde: " + fault.Description(),
                "Controllare la stringa di connessione e che il server sia acceso e raggiungibile da questo computer."};
    }
}

} // namespace vellumo::diagnosi
