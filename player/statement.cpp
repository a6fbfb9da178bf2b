#include "player/statement.h"

#include "host/text.h"
#include "player/written.h"

#include <algorithm>
#include <charconv>
#include <sstream>

namespace vellumo::player
{
namespace
{

using Part = std::string_view; // of a wording

// The wording without its first part, which is given back: a word, or all that stands in brackets.
Part TakePart(Part& wording)
{
    int depth = 0;
    std::size_t end = 0;
    for (; end < wording.size() && (depth != 0 || wording[end] != ' '); ++end)
    {
        depth += wording[end] == '[' ? 1 : wording[end] == ']' ? -1 : 0;
    }
    const auto part = wording.substr(0, end);
    wording.remove_prefix(std::min(end + 1, wording.size()));
    return part;
}

bool IsWholeNumber(const std::string& text)
{
    std::int32_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

// `choices` are words with "/" between them.
bool IsOneOf(Part choices, Part word)
{
    return std::string("/").append(choices).append("/").find(std::string("/").append(word).append("/")) !=
           std::string::npos;
}

// Tries wordings on a line, and knows how far the best of them came and what would have gone on from there.
class Matcher
{
public:
    explicit Matcher(const Line& line)
        : m_line(line)
    {
    }

    // Whether the line begins with the wording's first word, which tells most of them apart.
    [[nodiscard]] bool Begins(Part wording) const
    {
        return !m_line.words.front().quoted && IsOneOf(TakePart(wording), m_line.words.front().text);
    }

    // The whole line.
    bool Match(Node& node)
    {
        m_at = 0;
        return MatchAll(node.statement->wording, node) &&
               (m_at == m_line.words.size() || Missed("the end of the line"));
    }

    [[noreturn]] void Fail() const
    {
        throw SyntaxError(m_line.place, m_reach == 0
                                            ? "unknown keyword " + m_line.words.front().text
                                            : "expected " + Joined(m_expected, " or ") +
                                                  (m_reach == m_line.words.size() ? " at the end of the line"
                                                                                  : ", found " + m_line.From(m_reach)));
    }

private:
    bool MatchAll(Part wording, Node& node)
    {
        while (!wording.empty())
        {
            if (!MatchPart(TakePart(wording), node))
            {
                return false;
            }
        }
        return true;
    }

    // All of it or nothing.
    bool Try(Part wording, Node& node)
    {
        const auto at = m_at;
        Node with = node;
        const bool fits = MatchAll(wording, with);
        m_at = fits ? m_at : at;
        node = fits ? std::move(with) : node;
        return fits;
    }

    bool MatchPart(Part part, Node& node)
    {
        constexpr Part rest = "…";
        const auto inner = part.substr(1, part.size() - 2);
        const auto isLower = [](char c) { return host::Upper(c) != c; };
        switch (part.front())
        {
        case '[':
            static_cast<void>(Try(inner, node));
            return true;
        case '<':
            return MatchGroup(inner, node);
        case '\'':
            return MatchText(std::string(inner), node);
        default:
            return std::any_of(part.begin(), part.end(), isLower) ? MatchWord(std::string(part), node)
                   : part.ends_with(rest) ? MatchRest(std::string(part.substr(0, part.size() - rest.size())), node)
                                          : MatchText(std::string(part), node);
        }
    }

    bool MatchWord(const std::string& choices, Node& node)
    {
        const auto word = m_at < m_line.words.size() ? m_line.words[m_at] : Word();
        if (word.quoted || !IsOneOf(choices, word.text))
        {
            return Missed(Replaced(choices, "/", " or "));
        }
        node.choice = choices == word.text ? node.choice : word.text;
        node.values[word.text] = word.text;
        ++m_at;
        return true;
    }

    bool MatchText(const std::string& name, Node& node)
    {
        const auto* const word = m_at < m_line.words.size() ? &m_line.words[m_at] : nullptr;
        const bool isNumber = name.size() == 1;
        const bool isQuoted = name == "QUOTED";
        if (word == nullptr || (isQuoted && !word->quoted) || (isNumber && !IsWholeNumber(word->text)))
        {
            return Missed(isNumber ? "a number" : isQuoted ? "a text in quotes" : name);
        }
        node.values[name] = word->text;
        ++m_at;
        return true;
    }

    bool MatchRest(const std::string& name, Node& node)
    {
        if (m_at == m_line.words.size() && m_line.block.empty())
        {
            return Missed(name);
        }
        node.values[name] = m_line.From(m_at);
        m_at = m_line.words.size();
        return true;
    }

    bool MatchGroup(Part name, Node& node)
    {
        const auto group =
            std::find_if(Groups().begin(), Groups().end(), [&](const auto* g) { return g->name == name; });
        for (const auto& statement : (*group)->statements)
        {
            Node part{*group, &statement, node.place, m_line.From(m_at), node.block, {}, {}, {}, {}};
            if (Try(statement.wording, part))
            {
                node.parts.push_back(std::move(part));
                return true;
            }
        }
        return false;
    }

    // Always false.
    bool Missed(const std::string& expected)
    {
        if (m_at > m_reach)
        {
            m_reach = m_at;
            m_expected.clear();
        }
        if (m_at == m_reach && std::find(m_expected.begin(), m_expected.end(), expected) == m_expected.end())
        {
            m_expected.push_back(expected);
        }
        return false;
    }

    const Line& m_line;
    std::size_t m_at = 0; // the next word
    std::size_t m_reach = 0;
    std::vector<std::string> m_expected;
};

std::string Table(const Group& group)
{
    std::string rows = "| line | meaning |\n|---|---|\n";
    for (const auto& statement : group.statements)
    {
        const auto written = '`' + Replaced(std::string(statement.wording), "'", "\"") + '`';
        if (statement.meaning.empty())
        {
            rows.insert(rows.rfind(" | "), ", " + written);
        }
        else
        {
            const auto below = std::string(statement.below);
            rows += "| " + written + " | " + (below.empty() || below == "window" ? "" : "below `" + below + "`: ") +
                    std::string(statement.meaning) + " |\n";
        }
    }
    return rows;
}

} // namespace

std::string Node::Text(const std::string& name) const
{
    const auto found = values.find(name);
    if (found == values.end() && statement->wording.find(name) == Part::npos)
    {
        throw std::logic_error("no " + name + " in \"" + std::string(statement->wording) + '"');
    }
    return found == values.end() ? "" : found->second;
}

std::size_t Node::Count(const std::string& name) const
{
    const auto number = Number(name);
    if (number < 0)
    {
        throw Differs("a number below 0 counts nothing");
    }
    return static_cast<std::size_t>(number);
}

const Node* FindLine(const std::vector<Node>& lines, std::string_view keyword)
{
    const auto found =
        std::find_if(lines.begin(), lines.end(), [=](const Node& line) { return line.Keyword() == keyword; });
    return found == lines.end() ? nullptr : &*found;
}

Node ReadNode(const Line& line)
{
    Matcher matcher(line);
    for (const auto* const group : Groups())
    {
        for (const auto& statement : group->statements)
        {
            if (group->role == Role::Part || !matcher.Begins(statement.wording))
            {
                continue;
            }
            Node node{group, &statement, line.place, line.From(1), line.block, {}, {}, {}, {}};
            if (matcher.Match(node))
            {
                return node;
            }
        }
    }
    matcher.Fail();
}

const std::vector<const Group*>& Groups()
{
    static const std::vector<const Group*> groups = {
        &scenarioStatements, &practiceStatements, &sissStatements,      &callNumberStatements, &replyStatements,
        &entryStatements,    &callStatements,     &operationStatements, &argumentStatements,   &kindStatements,
        &lookStatements,     &actionStatements,   &checkStatements};
    return groups;
}

std::string WithStatementTables(const std::string& document)
{
    constexpr Part mark = "<!-- statements: ";
    std::istringstream in(document);
    std::string text;
    bool inTable = false;
    for (std::string line; std::getline(in, line);)
    {
        inTable = inTable && line.starts_with('|');
        text += inTable ? "" : line + '\n';
        if (line.starts_with(mark))
        {
            const auto name = line.substr(mark.size(), line.rfind(" -->") - mark.size());
            for (const auto* const group : Groups())
            {
                text += group->name == name ? Table(*group) : "";
            }
            inTable = true;
        }
    }
    return text;
}

} // namespace vellumo::player
