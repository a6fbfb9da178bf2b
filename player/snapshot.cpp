#include "player/snapshot.h"

#include "player/written.h"

#include <array>
#include <cstdlib>

namespace vellumo::player
{
namespace
{

constexpr std::array tables = {"Norda..Regione",
                               "Norda..Provincia",
                               "Norda..Comune",
                               "Norda..Asl",
                               "Norda..Esenzione",
                               "Norda..SISS_Esenzione",
                               "Studio",
                               "ImpostazioneStudio",
                               "Utente",
                               "Specialista",
                               "Paziente",
                               "Residenza",
                               "EsenzionePerPaziente",
                               "Ricetta",
                               "RicettaPrestazione",
                               "RicettaSSN",
                               "CertificatoMalattia",
                               "SincronizzazioneTabella",
                               "GiornaleServizi"};

TableTexts ReadTable(norda::Database& database, const std::string& table)
{
    TableTexts texts;
    const auto rows = database.Open("SELECT * FROM " + table);
    for (std::size_t i = 0; i < rows->ColumnCount(); ++i)
    {
        texts.columns.push_back(rows->ColumnName(i));
    }
    for (; !rows->IsAtEnd(); rows->MoveNext())
    {
        auto& row = texts.rows[rows->Field(0).ToInteger()];
        for (std::size_t i = 1; i < texts.columns.size(); ++i)
        {
            row[texts.columns[i]] = ValueText(rows->Field(i));
        }
    }
    return texts;
}

RowTexts NotNull(const RowTexts& row)
{
    RowTexts texts;
    for (const auto& [column, text] : row)
    {
        if (text != "NULL")
        {
            texts[column] = text;
        }
    }
    return texts;
}

RowTexts Different(const RowTexts& before, const RowTexts& after)
{
    RowTexts texts;
    for (const auto& [column, text] : after)
    {
        if (before.at(column) != text)
        {
            texts[column] = text;
        }
    }
    return texts;
}

void CompareTable(const std::string& table, const TableTexts& before, const TableTexts& after,
                  std::vector<RowChange>& changes)
{
    for (const auto& [key, row] : after.rows)
    {
        const auto old = before.rows.find(key);
        if (old == before.rows.end())
        {
            changes.push_back({RowChange::Kind::Added, table, key, NotNull(row)});
        }
        else if (auto texts = Different(old->second, row); !texts.empty())
        {
            changes.push_back({RowChange::Kind::Changed, table, key, std::move(texts)});
        }
    }
    for (const auto& [key, row] : before.rows)
    {
        if (after.rows.count(key) == 0)
        {
            changes.push_back({RowChange::Kind::Removed, table, key, {}});
        }
    }
}

} // namespace

Snapshot TakeSnapshot(norda::Database& database)
{
    Snapshot snapshot;
    for (const auto* const table : tables)
    {
        snapshot[table] = ReadTable(database, table);
    }
    return snapshot;
}

std::vector<RowChange> Compare(const Snapshot& before, const Snapshot& after)
{
    std::vector<RowChange> changes;
    for (const auto& [table, texts] : after)
    {
        CompareTable(table, before.at(table), texts, changes);
    }
    return changes;
}

std::string RowChange::Text() const
{
    std::string text = kind == Kind::Added ? "added " : kind == Kind::Changed ? "changed " : "removed ";
    text += table + (kind == Kind::Added ? "" : ' ' + std::to_string(key));
    std::vector<std::string> columns;
    for (const auto& [column, value] : texts)
    {
        columns.push_back(Joined({column, value}, " = "));
    }
    return text + (columns.empty() ? "" : " ") + Joined(columns, " | ");
}

} // namespace vellumo::player
