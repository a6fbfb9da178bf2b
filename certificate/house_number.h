// The house number inside an address that the host keeps as one text.
#pragma once

#include <string>
#include <string_view>

namespace vellumo::certificate
{

// The last run of digits with the character before it and all that follows, blanks trimmed: "Via Roma 12/A" gives
// "12/A", "Via Roma n.12" gives ".12". "1" for an address without digits. Faults when the run reaches the start of the
// address: there is no street then.
[[nodiscard]] std::string ExtractHouseNumber(std::string_view address);

} // namespace vellumo::certificate
