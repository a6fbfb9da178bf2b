#include "xml/guard.h"

#include "xml/tree.h"

#include <algorithm>
#include <cstdint>
#include <set>

namespace vellumo::xml
{
namespace
{

// Steps through the markup of a text, one "<…>" at a time.
class MarkupScanner
{
public:
    MarkupScanner(std::string_view text, const Limits& limits)
        : m_text(text)
        , m_limits(limits)
    {
    }

    bool Run()
    {
        while (m_good && (m_position = m_text.find('<', m_position)) != std::string_view::npos)
        {
            Step();
        }
        return m_good && std::ranges::includes(m_declaredPrefixes, m_usedPrefixes);
    }

private:
    void Step()
    {
        if (!SkipUntil("<!--", "-->") && !SkipUntil("<![CDATA[", "]]>") && !SkipUntil("<?", "?>"))
        {
            if (m_text.substr(m_position).starts_with("<!"))
            {
                m_good = false; // a document type declaration, or nothing that an XML text may hold
            }
            else
            {
                Tag();
            }
        }
    }

    // Skips a construct whose content is not markup. One that does not end leaves the rest to the engine, which
    // refuses it.
    bool SkipUntil(std::string_view opening, std::string_view closing)
    {
        if (!m_text.substr(m_position).starts_with(opening))
        {
            return false;
        }
        const auto end = m_text.find(closing, m_position + opening.size());
        m_position = end == std::string_view::npos ? m_text.size() : end + closing.size();
        return true;
    }

    void Tag()
    {
        const bool closing = m_text.substr(m_position).starts_with("</");
        const auto name = m_text.substr(m_position + (closing ? 2 : 1));
        if (!closing) // whose name the engine compares with the opening one
        {
            ++m_nodes;
            NotePrefix(name.substr(0, name.find_first_of(" \t\r\n/>")));
        }
        std::size_t attributes = 0;
        std::size_t word = m_position + 1; // start of what may be an attribute's name
        char last = '<';
        for (++m_position; m_position < m_text.size() && m_text[m_position] != '>'; ++m_position)
        {
            const char character = m_text[m_position];
            if (character == '"' || character == '\'')
            {
                ++m_nodes;
                if (++attributes > m_limits.attributes)
                {
                    m_good = false;
                    return;
                }
                NoteAttribute(m_text.substr(word, m_position - word));
                m_position = m_text.find(character, m_position + 1);
                if (m_position == std::string_view::npos)
                {
                    m_position = m_text.size();
                    return;
                }
                word = m_position + 1;
            }
            last = character;
        }
        if (closing)
        {
            m_depth -= m_depth > 0 ? 1 : 0;
        }
        else if (last != '/')
        {
            ++m_depth;
        }
        m_good = m_depth <= m_limits.depth && m_nodes <= m_limits.nodes;
    }

    void NotePrefix(std::string_view name)
    {
        if (const auto colon = name.find(':'); colon != std::string_view::npos)
        {
            m_usedPrefixes.insert(name.substr(0, colon));
        }
    }

    // `text` ends in the name and the equals sign.
    void NoteAttribute(std::string_view text)
    {
        constexpr std::string_view declaration = "xmlns:";
        text = text.substr(0, text.find_last_not_of(" \t\r\n=") + 1);
        text = text.substr(text.find_last_of(" \t\r\n") + 1);
        if (text.starts_with(declaration))
        {
            m_declaredPrefixes.insert(text.substr(declaration.size()));
        }
        else
        {
            NotePrefix(text);
        }
    }

    std::string_view m_text;
    const Limits& m_limits;
    std::set<std::string_view> m_usedPrefixes;
    std::set<std::string_view> m_declaredPrefixes = {"xml"};
    std::size_t m_position = 0;
    std::size_t m_depth = 0;
    std::size_t m_nodes = 0;
    bool m_good = true;
};

// Length of the UTF-8 sequence of one character that XML 1.0 allows, at the start of `text`; 0 for anything else.
std::size_t AllowedCharacter(std::string_view text)
{
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const unsigned first = byte(0);
    if (first < 0x80)
    {
        return first >= 0x20 || first == '\t' || first == '\n' || first == '\r' ? 1 : 0;
    }
    const std::size_t length = first >= 0xC2 && first < 0xE0   ? 2
                               : first >= 0xE0 && first < 0xF0 ? 3
                               : first >= 0xF0 && first < 0xF5 ? 4
                                                               : 0;
    if (length == 0 || text.size() < length)
    {
        return 0;
    }
    std::uint32_t code = first & (0xFFU >> (length + 1));
    for (std::size_t at = 1; at < length; ++at)
    {
        if ((byte(at) & 0xC0U) != 0x80)
        {
            return 0;
        }
        code = code << 6U | (byte(at) & 0x3FU);
    }
    constexpr std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool forbidden = code < smallest[length] || (code >= 0xD800 && code < 0xE000) || code == 0xFFFE ||
                           code == 0xFFFF || code > 0x10FFFF;
    return forbidden ? 0 : length;
}

} // namespace

bool IsAcceptable(std::string_view text, const Limits& limits)
{
    // A zero byte or a byte order mark (which one before the text has been taken from) is no XML; some engines pass
    // over the mark, or take the zero byte for the end and do not see what stands behind it.
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    return text.size() <= limits.bytes && text.find('\0') == std::string_view::npos &&
           !text.starts_with(byteOrderMark) && MarkupScanner(text, limits).Run();
}

std::string WithoutForbiddenCharacters(std::string_view text)
{
    std::string clean;
    clean.reserve(text.size());
    for (std::size_t position = 0; position < text.size();)
    {
        const std::size_t length = AllowedCharacter(text.substr(position));
        clean.append(text.substr(position, length));
        position += length == 0 ? 1 : length;
    }
    return clean;
}

} // namespace vellumo::xml
