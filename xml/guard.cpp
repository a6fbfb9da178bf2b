#include "xml/guard.h"

#include "xml/characters.h"

#include <algorithm>
#include <set>
#include <vector>

namespace vellumo::xml
{
namespace
{

// The elements that are open at a place of the text, with the prefixes that they declare.
class OpenElements
{
public:
    [[nodiscard]] std::size_t Depth() const noexcept { return m_firstOfEach.size(); }
    [[nodiscard]] bool HasDeclared(std::string_view prefix) const
    {
        return prefix == "xml" || m_inScope.contains(prefix);
    }

    void Open(const std::vector<std::string_view>& declared)
    {
        m_firstOfEach.push_back(m_declared.size());
        m_declared.insert(m_declared.end(), declared.begin(), declared.end());
        m_inScope.insert(declared.begin(), declared.end());
    }

    void Close()
    {
        if (m_firstOfEach.empty())
        {
            return; // more ends than beginnings: the engine refuses that
        }
        for (; m_declared.size() > m_firstOfEach.back(); m_declared.pop_back())
        {
            m_inScope.erase(m_inScope.find(m_declared.back()));
        }
        m_firstOfEach.pop_back();
    }

private:
    std::vector<std::size_t> m_firstOfEach; // in `m_declared`
    std::vector<std::string_view> m_declared;
    std::multiset<std::string_view> m_inScope; // the same, for look-ups
};

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
        while (m_good && m_position < m_text.size())
        {
            const auto markup = std::min(m_text.find('<', m_position), m_text.size());
            const auto between = m_text.substr(m_position, markup - m_position);
            // Outside the root element some engines pass over a byte order mark, which is no blank.
            m_good = m_open.Depth() > 0 || between.find_first_not_of(blanks) == std::string_view::npos;
            m_position = markup;
            if (m_good && m_position < m_text.size())
            {
                Step();
            }
        }
        return m_good;
    }

private:
    void Step()
    {
        switch (m_position + 1 < m_text.size() ? m_text[m_position + 1] : '\0')
        {
        case '!': // else a document type declaration, or nothing that an XML text may hold
            m_good = SkipUntil("<!--", "-->") || SkipUntil("<![CDATA[", "]]>");
            break;
        case '?':
            SkipInstruction();
            break;
        case '/':
            SkipUntil("</", ">"); // the engine compares its name with the opening one
            m_open.Close();
            break;
        default:
            Tag();
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

    // Some engines take a colon in the name for a prefix, and refuse it.
    void SkipInstruction()
    {
        const auto name = m_text.substr(m_position, m_text.find_first_of(" \t\r\n>", m_position) - m_position);
        SkipUntil("<?", "?>");
        m_good = name.find(':') == std::string_view::npos;
    }

    // Reads an opening tag to its end, or to the end of the text.
    void Tag()
    {
        m_used.clear();
        m_declared.clear();
        ++m_nodes;
        const auto name = NameAt(m_position + 1);
        NotePrefix(name);
        m_position += 1 + name.size();
        std::size_t attributes = 0;
        std::size_t word = m_position; // start of what may be an attribute's name
        char last = '<';
        for (; m_position < m_text.size() && m_text[m_position] != '>'; ++m_position)
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
                const bool isEmpty = m_text.substr(m_position + 1).starts_with(character);
                NoteAttribute(m_text.substr(word, m_position - word), isEmpty);
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
        m_position = std::min(m_position + 1, m_text.size());
        m_open.Open(m_declared);
        m_good = m_isQualified && m_open.Depth() <= m_limits.depth && m_nodes <= m_limits.nodes &&
                 std::ranges::all_of(m_used, [&](std::string_view prefix) { return m_open.HasDeclared(prefix); });
        if (last == '/')
        {
            m_open.Close();
        }
    }

    // No name has a quotation mark in it; what follows one is a value.
    [[nodiscard]] std::string_view NameAt(std::size_t begin) const
    {
        const auto endsName = [](char each)
        {
            return each == ' ' || each == '\t' || each == '\r' || each == '\n' || each == '/' || each == '>' ||
                   each == '"' || each == '\'';
        };
        const auto name = m_text.substr(begin);
        return name.substr(0, static_cast<std::size_t>(std::ranges::find_if(name, endsName) - name.begin()));
    }

    // Some engines look at prefixes though they are told not to, and refuse what namespaces forbid.
    void NotePrefix(std::string_view name)
    {
        if (const auto colon = name.find(':'); colon != std::string_view::npos)
        {
            m_used.push_back(name.substr(0, colon));
            m_isQualified = m_isQualified && IsPlain(name.substr(0, colon)) && IsPlain(name.substr(colon + 1));
        }
    }

    // Half of a name with a prefix.
    static bool IsPlain(std::string_view name)
    {
        constexpr std::string_view neverFirst = "0123456789-.";
        return !name.empty() && name.find(':') == std::string_view::npos &&
               neverFirst.find(name.front()) == std::string_view::npos;
    }

    // `text` ends in the name and the equals sign.
    void NoteAttribute(std::string_view text, bool isEmpty)
    {
        constexpr std::string_view declaration = "xmlns:";
        text = text.substr(0, text.find_last_not_of(" \t\r\n=") + 1);
        text = text.substr(text.find_last_of(blanks) + 1);
        if (text.starts_with(declaration))
        {
            const auto prefix = text.substr(declaration.size());
            m_declared.push_back(prefix);
            m_isQualified = m_isQualified && IsPlain(prefix) && !isEmpty && prefix != "xml" && prefix != "xmlns";
        }
        else
        {
            NotePrefix(text);
        }
    }

    std::string_view m_text;
    const Limits& m_limits;
    OpenElements m_open;
    std::vector<std::string_view> m_used;     // prefixes in the tag at hand
    std::vector<std::string_view> m_declared; // there, too
    std::size_t m_position = 0;
    std::size_t m_nodes = 0;
    bool m_isQualified = true; // every name so far
    bool m_good = true;
};

} // namespace

bool IsAcceptable(std::string_view text, const Limits& limits)
{
    // Some engines take a zero byte for the end and do not see what stands behind it.
    return text.size() <= limits.bytes && text.find('\0') == std::string_view::npos &&
           MarkupScanner(text, limits).Run();
}

} // namespace vellumo::xml
