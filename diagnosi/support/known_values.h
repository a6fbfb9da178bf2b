// Values of people that must not appear anywhere in a package, also where nobody expects them: in a line of the traces,
// a file's name, an element that is harmless otherwise.
#pragma once

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

namespace vellumo::diagnosi
{

class KnownValues
{
public:
    // Case does not count. Shorter ones than `shortest` characters are passed over, since they would be found in any
    // text: initials, house numbers. The first replacement of a value counts.
    void Add(std::string_view value, std::string_view replacement, std::size_t shortest = 4);

    // `text` with each of the values, where it stands as a word or words of its own, replaced. `count`: how many.
    [[nodiscard]] std::string Replaced(std::string_view text, std::size_t& count) const;

private:
    // The longest value that stands there: "Colombo Sironi" before "Colombo". End of the list when there is none.
    using Values = std::unordered_map<std::string, std::string>;
    [[nodiscard]] Values::const_iterator FindAt(const std::string& lowerText, std::size_t position) const;

    Values m_replacements;                                                            // by value in lower case
    std::unordered_map<std::string, std::set<std::size_t, std::greater<>>> m_lengths; // of the values, by first word
};

} // namespace vellumo::diagnosi
