// How scenarios and the messages about them write texts, and how one says that something is not as expected.
#pragma once

#include "host/date.h"
#include "host/value.h"

#include <filesystem>
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

// What has a number, counted from 1: "there is no request 3; there are 2".
template <class All>
const auto& Numbered(const All& all, std::size_t number, const std::string& what)
{
    if (number < 1 || number > all.size())
    {
        throw Differs("there is no " + what + ' ' + std::to_string(number) + "; there are " +
                      std::to_string(all.size()));
    }
    return all[number - 1];
}

// In quotes, line ends visible, cut when very long.
[[nodiscard]] std::string Quoted(const std::string& text);
[[nodiscard]] std::string Joined(const std::vector<std::string>& parts, std::string_view between);
// With each `part` as `instead`.
[[nodiscard]] std::string Replaced(std::string text, std::string_view part, std::string_view instead);

// A file's name for a title.
[[nodiscard]] std::string FileName(std::string title);

// "True", "False"
[[nodiscard]] std::string BooleanText(bool value);
inline constexpr const char* dayForm = "%Y-%m-%d"; // 2024-01-31
// In a form as that of `strftime`.
[[nodiscard]] std::string DateText(const host::Date& date, const char* form);
// As in a row of the database: days as above with " 09:30:00" behind when there is a time of day, "now" for a moment
// within the last quarter of an hour, "NULL".
[[nodiscard]] std::string ValueText(const host::Value& value);

// What is in a folder, by the numbers that the names begin with; nothing when there is no such folder.
[[nodiscard]] std::vector<std::filesystem::path> EntriesOf(const std::filesystem::path& folder);
// All that stands in it, byte for byte. Throws Differs when it cannot be read.
[[nodiscard]] std::string FileText(const std::filesystem::path& file);

} // namespace vellumo::player
