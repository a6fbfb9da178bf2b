#include "player/whole_patients.h"

#include <set>

namespace vellumo::player
{
namespace
{

// What stands or falls together, by a name for messages: the rows of one patient, or one row of any other table.
using Groups = std::map<std::string, std::map<std::string, RowTexts>>;

Groups GroupsOf(const Snapshot& snapshot)
{
    Groups groups;
    for (const auto& [table, texts] : snapshot)
    {
        if (table == journalTable) // tells of what broke off
        {
            continue;
        }
        for (const auto& [key, row] : texts.rows)
        {
            const auto id = table + ' ' + std::to_string(key);
            const auto patient = row.find("IDPaziente");
            const auto group = table == "Paziente"    ? "patient " + std::to_string(key)
                               : patient != row.end() ? "patient " + patient->second
                                                      : id;
            groups[group][id] = row;
        }
    }
    return groups;
}

std::map<std::string, RowTexts> Revoked(std::map<std::string, RowTexts> group)
{
    for (auto& [id, row] : group)
    {
        if (const auto column = row.find("Revocato"); column != row.end() && row.at("Deceduto") == "False")
        {
            column->second = "True";
        }
    }
    return group;
}

} // namespace

std::optional<std::string> FindBrokenPatient(const Snapshot& before, const Snapshot& after, const Snapshot& now)
{
    auto earlier = GroupsOf(before);
    auto later = GroupsOf(after);
    auto seen = GroupsOf(now);
    std::set<std::string> names;
    for (const auto* const groups : {&earlier, &later, &seen})
    {
        for (const auto& [name, rows] : *groups)
        {
            names.insert(name);
        }
    }
    for (const auto& name : names)
    {
        const auto& rows = seen[name];
        if (rows != earlier[name] && rows != later[name] && rows != Revoked(earlier[name]))
        {
            std::string text = name + " is neither as before nor as after:";
            for (const auto& [id, row] : rows)
            {
                text += "\n    " + id + ':';
                for (const auto& [column, value] : row)
                {
                    text.append(" ").append(column).append("=").append(value);
                }
            }
            return text;
        }
    }
    return std::nullopt;
}

} // namespace vellumo::player
