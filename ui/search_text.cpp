#include "ui/search_text.h"

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

constexpr std::string_view typographicApostrophe = "\u2019";

// The base letter of the two-byte UTF-8 character with these bytes, '?' when it has none.
char BaseLetter(unsigned char lead, unsigned char trail)
{
    const unsigned character = (lead & 0x1Fu) << 6u | (trail & 0x3Fu);
    return character >= firstAccented && character - firstAccented < baseLetters.size()
               ? baseLetters[character - firstAccented]
               : '?';
}

bool IsCombiningAccent(unsigned char lead, unsigned char trail) // U+0300..U+036F
{
    return lead == 0xCC || (lead == 0xCD && trail <= 0xAF);
}

} // namespace

std::string SearchText(std::string_view text)
{
    std::string folded;
    folded.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        if (byte >= 'A' && byte <= 'Z')
        {
            folded += static_cast<char>(byte - 'A' + 'a');
        }
        else if (byte == '\'' || text.substr(i).starts_with(typographicApostrophe))
        {
            i += byte == '\'' ? 0 : typographicApostrophe.size() - 1;
        }
        else if (byte >= 0xC2 && byte <= 0xDF && (next & 0xC0u) == 0x80)
        {
            if (const char base = BaseLetter(byte, next); base != '?')
            {
                folded += base;
            }
            else if (!IsCombiningAccent(byte, next))
            {
                folded += text.substr(i, 2);
            }
            ++i;
        }
        else
        {
            folded += text[i];
        }
    }
    return folded;
}

SearchWords::SearchWords(std::string_view typed)
{
    const std::string folded = SearchText(typed);
    constexpr std::string_view blanks = " \t\r\n";
    for (std::size_t start = folded.find_first_not_of(blanks); start != std::string::npos;)
    {
        const std::size_t end = std::min(folded.find_first_of(blanks, start), folded.size());
        m_words.push_back(folded.substr(start, end - start));
        start = folded.find_first_not_of(blanks, end);
    }
}

bool SearchWords::OccurIn(std::string_view searchText) const noexcept
{
    return std::all_of(m_words.begin(), m_words.end(),
                       [&](const std::string& word) { return searchText.find(word) != std::string_view::npos; });
}

} // namespace vellumo::ui
