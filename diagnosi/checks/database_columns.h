// The columns of a table or view as an ODBC driver lists them. Faults with the driver's text; the connection string,
// which may hold a password, is in none of them.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::diagnosi
{

struct DatabaseColumn
{
    std::string name;
    std::string type; // as the database calls it, "nvarchar"; "" where it does not tell, as for an expression of a view
};

class DatabaseColumns
{
public:
    // Connects, asking nobody.
    explicit DatabaseColumns(const std::string& connection);
    ~DatabaseColumns();
    DatabaseColumns(const DatabaseColumns&) = delete;
    DatabaseColumns& operator=(const DatabaseColumns&) = delete;

    // Empty when there is no such table. `catalog`: the database on the server that it is in, "" for the one connected
    // to.
    [[nodiscard]] std::vector<DatabaseColumn> Of(std::string_view catalog, std::string_view table) const;

private:
    struct Session;
    std::unique_ptr<Session> m_session;
};

} // namespace vellumo::diagnosi
