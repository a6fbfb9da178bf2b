#include "xml/line_breaks.h"

#include "xml/characters.h"

#include <algorithm>
#include <utility>

namespace vellumo::xml
{
namespace
{

constexpr std::string_view sectionBegin = "<![CDATA[";
constexpr std::string_view sectionEnd = "]]>";
constexpr std::string_view commentWithBreak = "<!--\n-->";

class Breaker
{
public:
    Breaker(std::string_view text, std::size_t longLine)
        : m_longLine(longLine)
        , m_rest(text)
    {
        m_broken.reserve(text.size() + text.size() / 32);
    }

    std::string Run() &&
    {
        while (!m_rest.empty())
        {
            if (m_rest.starts_with(sectionBegin))
            {
                Section();
            }
            else if (m_rest.starts_with("<!--"))
            {
                Copy(EndOf("<!--", "-->"));
                PutBreak();
            }
            else if (m_rest.starts_with("<?"))
            {
                Copy(EndOf("<?", "?>"));
                PutBreak();
            }
            else if (m_rest.starts_with('<'))
            {
                Tag();
            }
            else
            {
                Text(std::min(m_rest.find('<'), m_rest.size()));
            }
        }
        return std::move(m_broken);
    }

private:
    // Since the last line break and since the last ">", to both of which the engine goes back.
    [[nodiscard]] std::size_t Length() const noexcept { return m_broken.size() - std::min(m_line, m_bracket); }
    [[nodiscard]] bool IsLong() const noexcept { return Length() > m_longLine; }

    // Where the construct that begins here ends; an open one has all that is left.
    [[nodiscard]] std::size_t EndOf(std::string_view opening, std::string_view closing) const
    {
        const auto end = m_rest.find(closing, opening.size());
        return end == std::string_view::npos ? m_rest.size() : end + closing.size();
    }

    void Put(std::string_view text)
    {
        m_broken += text;
        if (const auto last = text.rfind('\n'); last != std::string_view::npos)
        {
            m_line = m_broken.size() - (text.size() - last - 1);
        }
        if (const auto last = text.rfind('>'); last != std::string_view::npos)
        {
            m_bracket = m_broken.size() - (text.size() - last - 1);
        }
    }

    void PutBreak() { Put(IsLong() && !m_rest.empty() ? commentWithBreak : ""); }

    void Copy(std::size_t length)
    {
        Put(m_rest.substr(0, length));
        m_rest.remove_prefix(length);
    }

    void Tag()
    {
        std::size_t end = 1;
        while (end < m_rest.size() && m_rest[end] != '>')
        {
            const bool opens = m_rest[end] == '"' || m_rest[end] == '\'';
            end = opens ? m_rest.find(m_rest[end], end + 1) : end;
            end = end == std::string_view::npos ? m_rest.size() : end + 1;
        }
        end = std::min(end, m_rest.size());
        Copy(end - (m_rest[end - 1] == '/' && end < m_rest.size() ? 1 : 0));
        Put(IsLong() && !m_rest.empty() ? "\n" : "");
        Copy(std::min(m_rest.find('>') + 1, m_rest.size()));
    }

    void Text(std::size_t length)
    {
        while (length > 0)
        {
            const auto piece = PieceOf(m_rest.substr(0, length));
            Copy(piece);
            length -= piece;
            PutBreak(); // outside the root element, too: a comment may stand there
        }
    }

    // How much of the text stays together: up to a blank or a reference's end once the line is long, or else to a place
    // between letters that is in no reference.
    [[nodiscard]] std::size_t PieceOf(std::string_view text) const
    {
        const auto from = m_longLine - std::min(m_longLine, Length());
        if (from >= text.size())
        {
            return text.size();
        }
        bool isReference = false;
        for (std::size_t at = 0; at < text.size(); ++at)
        {
            const char character = text[at];
            isReference = character == '&' || (isReference && character != ';');
            const bool isWord = (character >= '0' && character <= '9') || (character >= 'a' && character <= 'z') ||
                                (character >= 'A' && character <= 'Z');
            const bool mayEnd = blanks.find(character) != std::string_view::npos || character == ';' || isWord;
            if (at >= from && mayEnd && !isReference)
            {
                return at + 1;
            }
        }
        return text.size();
    }

    void Section()
    {
        const auto length = EndOf(sectionBegin, sectionEnd);
        const bool isClosed = m_rest.substr(0, length).ends_with(sectionEnd);
        auto content = m_rest.substr(0, length - (isClosed ? sectionEnd.size() : 0));
        m_rest.remove_prefix(content.size());
        for (auto line = content.find_first_of("\r\n"); line != std::string_view::npos;
             line = content.find_first_of("\r\n"))
        {
            Put(content.substr(0, line));
            Put(sectionEnd);
            const auto behind = std::min(content.find_first_not_of("\r\n", line), content.size());
            Put(content.substr(line, behind - line));
            Put(sectionBegin);
            content.remove_prefix(behind);
        }
        Put(content);
        Copy(isClosed ? sectionEnd.size() : 0);
    }

    std::size_t m_longLine;
    std::string_view m_rest;
    std::string m_broken;
    std::size_t m_line = 0; // behind the last line break in it
    std::size_t m_bracket = 0;
};

std::string WithSingleLineEnds(std::string_view text)
{
    std::string single;
    single.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const bool isReturn = text[i] == '\r';
        i += isReturn && i + 1 < text.size() && text[i + 1] == '\n' ? 1u : 0u;
        single += isReturn ? '\n' : text[i];
    }
    return single;
}

} // namespace

std::string WithLineBreaks(std::string_view text, std::size_t longLine)
{
    const std::string single = WithSingleLineEnds(text);
    return Breaker(single, longLine).Run();
}

} // namespace vellumo::xml
