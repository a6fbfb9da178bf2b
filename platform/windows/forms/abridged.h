// Texts for a window: of a longer one its beginning and an ellipsis. Windows breaks a text into lines in a time that
// grows with its square, so that one of a megabyte, as a faulty reply may bring it, would stop the host for minutes.
#pragma once

#include <string>
#include <string_view>

namespace vellumo::windows
{

[[nodiscard]] std::wstring Abridged(std::string_view text);

} // namespace vellumo::windows
