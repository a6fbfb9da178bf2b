#include "simulator/siss/xml_text.h"

#include "host/fault.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace vellumo::siss
{
namespace
{

struct Entity
{
    std::string_view name;
    char character;
};

constexpr std::array<Entity, 5> entities = {
    {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}}};

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

class Reader
{
public:
    explicit Reader(std::string_view text)
        : m_text(text)
    {
    }

    Element Document()
    {
        SkipMisc();
        auto root = ReadElement();
        SkipMisc();
        Demand(m_at == m_text.size(), "testo dopo l'elemento principale");
        return root;
    }

private:
    [[nodiscard]] bool At(std::string_view text) const { return m_text.substr(m_at, text.size()) == text; }

    void Demand(bool condition, const char* what) const
    {
        if (!condition)
        {
            throw host::Fault("La richiesta non è XML: " + std::string(what) + " (posizione " + std::to_string(m_at) +
                              ").");
        }
    }

    void Take(std::string_view text)
    {
        Demand(At(text), "manca un segno");
        m_at += text.size();
    }

    void SkipBlanks()
    {
        while (m_at < m_text.size() && IsBlank(m_text[m_at]))
        {
            ++m_at;
        }
    }

    void SkipPast(std::string_view end)
    {
        const auto found = m_text.find(end, m_at);
        Demand(found != std::string_view::npos, "parte non chiusa");
        m_at = found + end.size();
    }

    void SkipMisc()
    {
        for (SkipBlanks(); At("<?") || At("<!--"); SkipBlanks())
        {
            SkipPast(At("<?") ? "?>" : "-->");
        }
    }

    std::string Name()
    {
        const auto begin = m_at;
        while (m_at < m_text.size() && !IsBlank(m_text[m_at]) &&
               std::string_view("=/<>\"'&").find(m_text[m_at]) == std::string_view::npos)
        {
            ++m_at;
        }
        Demand(m_at > begin, "manca un nome");
        return std::string(m_text.substr(begin, m_at - begin));
    }

    std::string Characters(std::string_view raw) const
    {
        std::string out;
        for (std::size_t at = 0; at < raw.size();)
        {
            if (raw[at] != '&')
            {
                out += raw[at++];
                continue;
            }
            const auto rest = raw.substr(at);
            const auto* const entity = std::find_if(
                entities.begin(), entities.end(),
                [&](const Entity& candidate) { return rest.substr(0, candidate.name.size()) == candidate.name; });
            if (entity != entities.end())
            {
                out += entity->character;
                at += entity->name.size();
                continue;
            }
            // Line ends and tabs inside values are written as character references.
            const auto end = rest.find(';');
            Demand(rest.substr(0, 2) == "&#" && end != std::string_view::npos, "entità sconosciuta");
            const bool hex = rest[2] == 'x';
            const auto number = std::stoi(std::string(rest.substr(hex ? 3 : 2, end)), nullptr, hex ? 16 : 10);
            Demand(number > 0 && number < 128, "carattere inatteso");
            out += static_cast<char>(number);
            at += end + 1;
        }
        return out;
    }

    Element ReadElement()
    {
        Take("<");
        Element element;
        element.name = Name();
        for (SkipBlanks(); !At(">") && !At("/>"); SkipBlanks())
        {
            auto name = Name();
            Take("=");
            const char quote = m_at < m_text.size() ? m_text[m_at] : ' ';
            Demand(quote == '"' || quote == '\'', "attributo senza virgolette");
            const auto begin = ++m_at;
            SkipPast(std::string_view(&quote, 1));
            element.attributes.emplace_back(std::move(name), Characters(m_text.substr(begin, m_at - begin - 1)));
        }
        if (At("/>"))
        {
            m_at += 2;
            return element;
        }
        Take(">");
        ReadContent(element);
        return element;
    }

    void ReadContent(Element& element)
    {
        while (!At("</"))
        {
            Demand(m_at < m_text.size(), "elemento non chiuso");
            if (At("<!--"))
            {
                SkipPast("-->");
            }
            else if (At("<"))
            {
                element.children.push_back(ReadElement());
            }
            else
            {
                const auto begin = m_at;
                m_at = std::min(m_text.find('<', m_at), m_text.size());
                element.text += Characters(m_text.substr(begin, m_at - begin));
            }
        }
        m_at += 2;
        Demand(Name() == element.name, "elementi incrociati");
        SkipBlanks();
        Take(">");
        if (!element.children.empty())
        {
            element.text.clear();
        }
    }

    std::string_view m_text;
    std::size_t m_at = 0;
};

// Takes the first step off `path`.
std::string_view NextStep(std::string_view& path)
{
    const auto slash = std::min(path.find('/'), path.size());
    const auto step = path.substr(0, slash);
    path.remove_prefix(std::min(slash + 1, path.size()));
    return step;
}

} // namespace

std::string Escape(std::string_view text)
{
    std::string out;
    for (const char c : text)
    {
        const auto* const entity =
            std::find_if(entities.begin(), entities.end(), [c](const Entity& e) { return e.character == c; });
        if (entity == entities.end())
        {
            out += c;
        }
        else
        {
            out += entity->name;
        }
    }
    return out;
}

const Element* Element::Find(std::string_view path) const
{
    const Element* at = this;
    while (at != nullptr && !path.empty())
    {
        auto step = NextStep(path);
        int wanted = 1;
        if (!step.empty() && step.back() == ']')
        {
            const auto open = step.find('[');
            wanted = std::stoi(std::string(step.substr(open + 1)));
            step = step.substr(0, open);
        }
        const auto found = std::find_if(at->children.begin(), at->children.end(),
                                        [&](const Element& child) { return child.name == step && --wanted == 0; });
        at = found == at->children.end() ? nullptr : &*found;
    }
    return at;
}

std::optional<std::string> Element::TextAt(std::string_view path) const
{
    const auto sign = path.find('@');
    if (sign == std::string_view::npos)
    {
        const auto* const element = Find(path);
        return element == nullptr ? std::nullopt : std::optional(element->text);
    }
    const auto* const element = Find(path.substr(0, sign == 0 ? 0 : sign - 1));
    if (element != nullptr)
    {
        for (const auto& [attribute, value] : element->attributes)
        {
            if (attribute == path.substr(sign + 1))
            {
                return value;
            }
        }
    }
    return std::nullopt;
}

Element ReadXml(std::string_view text)
{
    return Reader(text).Document();
}

std::string Envelope(std::string_view body, std::string_view prefix)
{
    const std::string p(prefix);
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<" + p + ":Envelope xmlns:" + p +
           "=\"http://schemas.xmlsoap.org/soap/envelope/\" xmlns:m=\"urn:siss:ICCE\"><" + p + ":Body>" +
           std::string(body) + "</" + p + ":Body></" + p + ":Envelope>";
}

} // namespace vellumo::siss
