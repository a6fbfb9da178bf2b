// Texts in columns at the terminal. Widths are counted in characters (code points of UTF-8).
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vellumo::native
{

// Exactly `width` characters: cut with an ellipsis or filled with blanks.
[[nodiscard]] std::string Fitted(const std::string& text, std::size_t width);

// Lines of at most `width` characters, broken between words, and within a word that is longer; the text's own line
// ends stay. Blanks at a break and line ends at the end of the text are left out.
[[nodiscard]] std::vector<std::string> Wrapped(const std::string& text, std::size_t width);

} // namespace vellumo::native
