// One line of a scenario file and the text block that belongs to it, read word by word. What cannot be read is a
// SyntaxError that names the place.
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

class Line
{
public:
    Line(Place place, std::string_view text);

    [[nodiscard]] const Place& Where() const noexcept { return m_place; }
    // The lines below that begin with "|", without it and the one blank behind it.
    [[nodiscard]] const std::vector<std::string>& Block() const noexcept { return m_block; }
    void AddToBlock(std::string_view text) { m_block.emplace_back(text); }

    // How far it has been read.
    [[nodiscard]] std::size_t At() const noexcept { return m_at; }
    [[nodiscard]] bool AtEnd() const noexcept { return m_at == m_text.size(); }
    // True when the next thing is in quotes.
    [[nodiscard]] bool NextIsQuoted() const noexcept { return !AtEnd() && m_text[m_at] == '"'; }
    // The next word, or text in double quotes (in which "" stands for one of them); not at the end.
    [[nodiscard]] std::string Word();
    // Takes the next word when it is this one, without quotes.
    bool Take(std::string_view word);
    // All that is left, without taking it.
    [[nodiscard]] std::string Peek() const { return m_text.substr(m_at); }
    // All that is left, as it stands.
    [[nodiscard]] std::string Rest();
    // All that is left, in cells between "|", each trimmed and taken out of its quotes.
    [[nodiscard]] std::vector<std::string> Cells();

    [[noreturn]] void Fail(const std::string& what) const { throw SyntaxError(m_place, what); }

private:
    void SkipBlanks();

    Place m_place;
    std::string m_text;
    std::size_t m_at = 0;
    std::vector<std::string> m_block;
};

// The lines of a scenario file: without comments and blank lines, dates put in for "{today}", blocks joined.
[[nodiscard]] std::vector<Line> ReadLines(const std::string& file, std::string_view text);

} // namespace vellumo::player
