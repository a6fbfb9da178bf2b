// The simulated practice on a SQL Server: two databases of names of their own, made, put back and removed there. No
// other database is touched: statements that address `Norda..` go to the second of them, and one that has their name
// without having been made here is refused.
//
// What a scenario changed is put back from copies of all tables, which lie beside them. Nothing here is kept open.
#pragma once

#include "simulator/norda/database.h"

#include <memory>
#include <string>
#include <vector>

namespace vellumo::norda
{

class ServerDatabases
{
public:
    // Driver, server and how to log on, without a database: faults when one is named.
    explicit ServerDatabases(std::string connectionString);

    // New from the seed. What an earlier run left is replaced. The user must be allowed to make databases.
    void Create() const;
    // All rows, and the keys that come next, are as `Create` left them.
    void Reset() const;
    void Remove() const;

    [[nodiscard]] std::shared_ptr<Database> Open() const;
    // The server itself, to look at.
    [[nodiscard]] std::shared_ptr<Database> OpenMaster() const;

private:
    std::string m_connection;
};

// Of the practice (`place` "") or of the shared database ("Norda.."), without the copies.
[[nodiscard]] std::vector<std::string> TablesOf(Database& database, const std::string& place);

} // namespace vellumo::norda
