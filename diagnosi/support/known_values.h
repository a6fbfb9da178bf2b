// Values of people that must not appear anywhere in a package, also where nobody expects them: in a line of the traces,
// a file's name, an element that is harmless otherwise.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

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
    struct Value
    {
        std::string text; // in lower case
        std::string replacement;
    };

    [[nodiscard]] const Value* FindAt(std::string_view lowerText, std::size_t position) const;

    std::unordered_map<std::string, std::vector<Value>> m_values; // by their first word
};

} // namespace vellumo::diagnosi
