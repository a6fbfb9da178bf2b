// Texts for a window: of a longer one its beginning and an ellipsis. Windows breaks a text into lines in a time that
// grows with its square, so that one of a megabyte, as a faulty reply may bring it, would stop the host for minutes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vellumo::windows
{

// UTF-16 units; some hundred lines are more than anybody reads.
constexpr std::size_t longestInAWindow = 5000;

[[nodiscard]] std::wstring Abridged(std::string_view text);

} // namespace vellumo::windows
