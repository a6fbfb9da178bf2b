// Texts as a search compares them: without case, accents and apostrophes, so that "invalidita" finds both
// "Invalidità" and "INVALIDITA'". Knows the Latin letters of European languages; other characters stay as they are.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vellumo::ui
{

// The text as it is searched. What is not UTF-8 is kept byte by byte.
[[nodiscard]] std::string SearchText(std::string_view text);

// What the operator typed, as words each of which must occur.
class SearchWords
{
public:
    explicit SearchWords(std::string_view typed);

    [[nodiscard]] bool Empty() const noexcept { return m_words.empty(); }
    // Whether every word occurs in `searchText`, which `SearchText` made.
    [[nodiscard]] bool OccurIn(std::string_view searchText) const noexcept;

private:
    std::vector<std::string> m_words;
};

} // namespace vellumo::ui
