// The version that this library, and every program built with it, is.
#pragma once

#include <string_view>

namespace vellumo::host
{

// "1.2.3.456": the project's version and the number of commits that made it, 0 where they are not known.
extern const std::string_view version;
// The same with the short name of the last commit: "1.2.3.456 (0a1b2c3d)".
extern const std::string_view fullVersion;

} // namespace vellumo::host
