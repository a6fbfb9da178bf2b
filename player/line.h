// One line of a scenario file in words, and the text block that belongs to it. What cannot be read is a SyntaxError
// that names the place.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::player
{

struct Place
{
    std::string file;
    int line = 0;

    [[nodiscard]] std::string Text() const { return file + ':' + std::to_string(line); }
};

class SyntaxError : public std::runtime_error
{
public:
    SyntaxError(const Place& place, const std::string& what)
        : std::runtime_error(place.Text() + ": " + what)
    {
    }
};

// A word, or a text in double quotes (in which "" stands for one of them).
struct Word
{
    std::string text;
    bool quoted = false;
    std::size_t at = 0; // where it begins in the line
};

// Behind a word "#" stands a comment.
struct Line
{
    Line(Place where, std::string_view written);

    Place place;
    std::string text;
    std::vector<Word> words;
    // The lines below that begin with "|", without it and the one blank behind it.
    std::vector<std::string> block;

    // The text from that word on, as it stands; "" behind the last.
    [[nodiscard]] std::string From(std::size_t word) const
    {
        return word < words.size() ? text.substr(words[word].at) : "";
    }
};

// The cells between "|", each trimmed and taken out of its quotes.
[[nodiscard]] std::vector<std::string> CellsOf(const Place& place, std::string_view text);

// The lines of a scenario file: without comments and blank lines, dates put in for "{today}", blocks joined.
[[nodiscard]] std::vector<Line> ReadLines(const std::string& file, const std::string& text);

} // namespace vellumo::player
