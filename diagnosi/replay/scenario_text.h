// A scenario file while it is being written: lines, their indentation, blocks, statements of the database.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vellumo::diagnosi
{

class ScenarioText
{
public:
    void Line(std::size_t level, std::string_view text);
    void Comment(std::size_t level, std::string_view text);
    // A text of any lines, below the line before it.
    void Block(std::size_t level, std::string_view text);
    // The statement as far as it holds no values, and what follows.
    void Sql(std::string_view statement, std::string_view values = {});
    void Gap() { m_text += '\n'; }

    [[nodiscard]] const std::string& Text() const noexcept { return m_text; }

private:
    std::string m_text;
};

// As a word of a line.
[[nodiscard]] std::string InQuotes(std::string_view text);
// As a value of a statement, in one line.
[[nodiscard]] std::string Literal(std::string_view text);
// Of eight digits, as requests have a date; NULL for anything else.
[[nodiscard]] std::string DateLiteral(std::string_view date);

} // namespace vellumo::diagnosi
