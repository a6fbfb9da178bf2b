// For an engine that takes a time that grows with the square of a line's length, loses text behind a line break in a
// CDATA section, and counts a line end of two characters twice where its buffers meet.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vellumo::xml
{

// The same document with line breaks where they mean nothing, so that no line is much longer than its longest
// tag: before the end of a tag, and in a comment put into a text. A CDATA section ends before each
// line break in it and begins again behind. A line ends with one character, as every reader of XML takes it. What is
// not well-formed stays so. `longLine`: so many bytes are no long line yet.
[[nodiscard]] std::string WithLineBreaks(std::string_view text, std::size_t longLine = 500);

} // namespace vellumo::xml
