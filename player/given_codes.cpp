#include "player/given_codes.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <utility>

namespace vellumo::player
{
namespace
{

using Rows = std::set<norda::RowId>;

std::vector<std::string> CodesOf(const std::vector<siss::Exchange>& exchanges, std::size_t replies)
{
    std::vector<std::string> codes;
    for (std::size_t i = 0; i < replies; ++i)
    {
        const auto& reply = exchanges.at(i).reply;
        for (const std::string_view element : {"<identificativoUnivoco>", "<protocolloINPS>"})
        {
            for (auto at = reply.find(element); at != std::string::npos; at = reply.find(element, at))
            {
                at += element.size();
                codes.push_back(reply.substr(at, reply.find('<', at) - at));
            }
        }
    }
    return codes;
}

// That have got the code since.
Rows RowsWith(const std::string& code, const norda::Snapshot& snapshot, const Rows& before = {})
{
    Rows rows;
    for (const auto& [row, texts] : snapshot)
    {
        const bool has = row.table != norda::journalTable &&
                         std::ranges::any_of(texts, [&](const auto& cell) { return cell.second == code; });
        if (has && !before.contains(row))
        {
            rows.insert(row);
        }
    }
    return rows;
}

bool InJournal(const std::string& code, const norda::Snapshot& snapshot)
{
    return std::ranges::any_of(
        snapshot, [&](const auto& each)
        { return each.first.table == norda::journalTable && each.second.at("Riga").find(code) != std::string::npos; });
}

} // namespace

bool GivesCodes(const std::vector<siss::Exchange>& exchanges)
{
    return !CodesOf(exchanges, exchanges.size()).empty();
}

std::optional<std::string> FindLostCode(const std::vector<siss::Exchange>& exchanges, std::size_t replies,
                                        const Snapshots& snapshots)
{
    for (const auto& code : CodesOf(exchanges, replies))
    {
        const Rows before = RowsWith(code, snapshots.before);
        const Rows expected = RowsWith(code, snapshots.after, before);
        const Rows seen = RowsWith(code, snapshots.now, before);
        if (!std::ranges::includes(expected, seen))
        {
            return code + " is in the row of another";
        }
        if (seen.empty() && !InJournal(code, snapshots.now))
        {
            return code + " is neither in its row nor in the journal";
        }
    }
    return std::nullopt;
}

} // namespace vellumo::player
