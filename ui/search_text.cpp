#include "ui/search_text.h"

#include "host/text.h"

#include <algorithm>
#include <cstddef>

namespace vellumo::ui
{
namespace
{

// Base letters of U+00C0..U+017F in rows of 32; '?' where a character is no letter with an accent and stays.
constexpr unsigned firstAccented = 0xC0;
constexpr std::string_view baseLetters = "aaaaaa?ceeeeiiiidnooooo?ouuuuy??"
                                         "aaaaaa?ceeeeiiiidnooooo?ouuuuy?y"
                                         "aaaaaaccccccccddddeeeeeeeeeegggg"
                                         "gggghhhhiiiiiiiiii??jjkkklllllll"
                                         "lllnnnnnnnnnoooooo??rrrrrrssssss"
                                         "ssttttttuuuuuuuuuuuuwwyyyzzzzzzs";
static_assert(baseLetters.size() == 0x180 - firstAccented);

constexpr char32_t typographicApostrophe = 0x2019;

// The base letter of a letter with an accent, '?' for every other character.
char BaseLetter(char32_t character)
{
    return character >= firstAccented && character - firstAccented < baseLetters.size()
               ? baseLetters[character - firstAccented]
               : '?';
}

// What the search passes over: apostrophes, and accents that stand behind their letter (U+0300..U+036F).
bool IsPassedOver(char32_t character)
{
    return character == '\'' || character == typographicApostrophe || (character >= 0x300 && character <= 0x36F);
}

} // namespace

std::string SearchText(std::string_view text)
{
    std::string folded;
    folded.reserve(text.size());
    for (std::size_t position = 0; position < text.size();)
    {
        const std::size_t start = position;
        const char32_t character = host::TakeCharacter(text, position);
        if (const char base = BaseLetter(character); base != '?')
        {
            folded += base;
        }
        else if (position - start == 1 && character != '\'')
        {
            folded += host::Lower(text[start]);
        }
        else if (!IsPassedOver(character))
        {
            folded += text.substr(start, position - start);
        }
    }
    return folded;
}

SearchWords::SearchWords(std::string_view typed)
{
    const std::string folded = SearchText(typed);
    for (std::size_t start = folded.find_first_not_of(host::blanks); start != std::string::npos;)
    {
        const std::size_t end = std::min(folded.find_first_of(host::blanks, start), folded.size());
        m_words.push_back(folded.substr(start, end - start));
        start = folded.find_first_not_of(host::blanks, end);
    }
}

bool SearchWords::OccurIn(std::string_view searchText) const noexcept
{
    return std::all_of(m_words.begin(), m_words.end(),
                       [&](const std::string& word) { return searchText.find(word) != std::string_view::npos; });
}

} // namespace vellumo::ui
