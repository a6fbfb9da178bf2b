#include "simulator/norda/whole_patients.h"

namespace vellumo::norda
{
namespace
{

// What stands or falls together, by a name for messages: the rows of one patient, or one row of any other table.
using Groups = std::map<std::string, Snapshot>;

Groups GroupsOf(const Snapshot& snapshot)
{
    Groups groups;
    for (const auto& [row, texts] : snapshot)
    {
        if (row.table != journalTable) // it tells of what broke off
        {
            const auto key = std::to_string(row.key);
            const auto patient = texts.find("IDPaziente");
            groups[row.table == "Paziente"  ? "patient " + key
                   : patient != texts.end() ? "patient " + patient->second
                                            : row.table + ' ' + key][row] = texts;
        }
    }
    return groups;
}

Snapshot Revoked(Snapshot group)
{
    for (auto& [row, texts] : group)
    {
        if (const auto column = texts.find("Revocato"); column != texts.end() && texts.at("Deceduto") == "False")
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
    for (const auto* const groups : {&earlier, &later})
    {
        for (const auto& [name, rows] : *groups)
        {
            seen.try_emplace(name); // it may be gone
        }
    }
    for (const auto& [name, rows] : seen)
    {
        if (rows != earlier[name] && rows != later[name] && rows != Revoked(earlier[name]))
        {
            auto text = name + " is neither as before nor as after:";
            for (const auto& change : Compare(earlier[name], rows))
            {
                text += "\n    " + change.Text();
            }
            return text;
        }
    }
    return std::nullopt;
}

} // namespace vellumo::norda
