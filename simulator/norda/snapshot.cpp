#include "simulator/norda/snapshot.h"

#include "host/clock.h"
#include "simulator/norda/server_databases.h"

namespace vellumo::norda
{
namespace
{

void AddRows(Database& database, const std::string& table, Snapshot& snapshot)
{
    for (const auto rows = database.Open("SELECT * FROM " + table); !rows->IsAtEnd(); rows->MoveNext())
    {
        auto& texts = snapshot[{table, rows->Field(0).ToInteger()}];
        for (std::size_t i = 1; i < rows->ColumnCount(); ++i)
        {
            texts[rows->ColumnName(i)] = ValueText(rows->Field(i));
        }
    }
}

} // namespace

std::string ValueText(const host::Value& value)
{
    const auto* const date = std::get_if<host::Date>(&value.Get());
    if (date == nullptr)
    {
        return value.IsNull() ? "NULL" : value.ToText();
    }
    constexpr double quarterOfAnHour = 1.0 / 96;
    const auto age = host::SystemClock().Now().ToOle() - date->ToOle();
    const bool isDay = *date == host::Date::FromOle(date->DayNumber());
    const auto text = Literal(Dialect::Sqlite, *date); // in quotes, with the time of day
    return !isDay && age >= 0 && age < quarterOfAnHour ? "now" : text.substr(1, isDay ? 10 : 19);
}

Snapshot TakeSnapshot(Database& database)
{
    Snapshot snapshot;
    for (const std::string place : {"", "Norda.."})
    {
        for (const auto& table : TablesOf(database, place))
        {
            AddRows(database, place + table, snapshot);
        }
    }
    return snapshot;
}

std::vector<RowChange> Compare(const Snapshot& before, const Snapshot& after)
{
    std::vector<RowChange> changes;
    for (const auto& [row, texts] : after)
    {
        const auto old = before.find(row);
        const bool isNew = old == before.end();
        if (!isNew && old->second == texts)
        {
            continue;
        }
        RowChange change{isNew ? "added" : "changed", row, {}};
        for (const auto& [column, text] : texts)
        {
            if (text != (isNew ? "NULL" : old->second.at(column)))
            {
                change.texts[column] = text;
            }
        }
        changes.push_back(std::move(change));
    }
    for (const auto& [row, texts] : before)
    {
        if (after.count(row) == 0)
        {
            changes.push_back({"removed", row, {}});
        }
    }
    return changes;
}

std::vector<std::string> RowChange::Texts() const
{
    std::vector<std::string> all = {kind + ' ' + row.table + (kind == "added" ? "" : ' ' + std::to_string(row.key))};
    for (const auto& [column, text] : texts)
    {
        all.push_back(host::Joined({column, text}, text.empty() ? " =" : " = "));
    }
    return all;
}

} // namespace vellumo::norda
