#include "player/snapshot.h"

#include "host/clock.h"

#include <array>
#include <cstdlib>

namespace vellumo::player
{
namespace
{

constexpr double quarterOfAnHour = 1.0 / 96;

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

std::string Digits(int number, std::size_t width)
{
    const auto text = std::to_string(number);
    return std::string(width - std::min(width, text.size()), '0') + text;
}

std::string DateText(const host::Date& date)
{
    const auto day = date.ToCalendar();
    auto text = Digits(day.year, 4) + '-' + Digits(day.month, 2) + '-' + Digits(day.day, 2);
    if (day.hour == 0 && day.minute == 0 && day.second == 0)
    {
        return text;
    }
    const auto age = host::SystemClock().Now().ToOle() - date.ToOle();
    if (age >= 0 && age < quarterOfAnHour)
    {
        return "now";
    }
    return text + ' ' + Digits(day.hour, 2) + ':' + Digits(day.minute, 2) + ':' + Digits(day.second, 2);
}

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
            row[texts.columns[i]] = ScenarioText(rows->Field(i));
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

std::string ScenarioText(const host::Value& value)
{
    if (value.IsNull())
    {
        return "NULL";
    }
    const auto* const date = std::get_if<host::Date>(&value.Get());
    return date == nullptr ? value.ToText() : DateText(*date);
}

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
    text += table;
    text += kind == Kind::Added ? "" : ' ' + std::to_string(key);
    const char* between = " ";
    for (const auto& [column, value] : texts)
    {
        text += between;
        text += column;
        text += " = ";
        text += value;
        between = " | ";
    }
    return text;
}

} // namespace vellumo::player
