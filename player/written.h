// How scenarios and the messages about them write texts, and how one says that something is not as expected.
#pragma once

#include "host/date.h"
#include "host/value.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::player
{

// Something is not as a line of the scenario says; the text tells what. Whoever plays the line names its place.
class Differs : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Throws Differs unless both are the same.
void Expect(const std::string& what, const std::string& expected, const std::string& seen);

// In quotes, line ends visible, cut when very long.
[[nodiscard]] std::string Quoted(const std::string& text);
[[nodiscard]] std::string Joined(const std::vector<std::string>& parts, std::string_view between);
[[nodiscard]] std::string Trimmed(std::string_view text);
[[nodiscard]] std::string WithoutReturns(std::string text, std::string_view lineBreak);

// With `n` in the place of each "{n}".
[[nodiscard]] std::string Numbered(std::string text, int n);
// A file's name for a title.
[[nodiscard]] std::string FileName(std::string title);

// "True", "False"
[[nodiscard]] std::string BooleanText(bool value);
// "2024-01-31"
[[nodiscard]] std::string DayText(const host::Date& date);
// As in a row of the database: dates as above with " 09:30:00" behind when there is a time of day, "now" for a moment
// within the last quarter of an hour, "NULL".
[[nodiscard]] std::string ValueText(const host::Value& value);

} // namespace vellumo::player
