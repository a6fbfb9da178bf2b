// What the project says of Windows and of SQL Server and has only ever seen under Wine and on SQLite, and which
// scenarios show it elsewhere.
#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace vellumo::acceptance
{

struct Claim
{
    const char* text; // Italian
    std::vector<std::string_view> files;
    bool ofServer = false; // only a SQL Server can show it
};

[[nodiscard]] std::span<const Claim> Claims();

// What even this kit does not show.
[[nodiscard]] std::span<const char* const> NotShown();

} // namespace vellumo::acceptance
