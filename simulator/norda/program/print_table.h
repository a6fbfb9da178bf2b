// Rows of a query in columns, as the console shows them.
#pragma once

#include "host/connection.h"

#include <iosfwd>
#include <string>

namespace vellumo::norda
{

// Dates as dd/mm/yyyy, Booleans as sì and no, NULL as "-".
[[nodiscard]] std::string ShownText(const host::Value& value);

void PrintTable(std::ostream& out, host::Recordset& rows);

} // namespace vellumo::norda
