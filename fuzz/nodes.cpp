// Documents read, selected from and edited, held against the same done to libxml2's own tree.
//
// An input is a document, and behind a line "%%" the steps, a line each; a node that is found or made gets the next
// number, and numbers count round from the root, which is 0:
//   s2 a/@b    selects from node 2          t2 text   sets the text of node 2
//   c2         copies node 2                a2 3      appends node 3 to node 2
//   r2         removes node 2
#include "fuzz/bare_document.h"
#include "fuzz/oracle.h"
#include "xml/document.h"
#include "xml/line_breaks.h"

#include <string>
#include <string_view>
#include <vector>

namespace vellumo::fuzz
{
namespace
{

constexpr std::string_view separator = "\n%%\n";
constexpr std::size_t mostSteps = 64;
constexpr std::size_t mostNodes = 400; // copies of copies would double the tree with each step

struct Pair
{
    xml::Node ours;
    xmlNode* bare;
};

class Edits
{
public:
    Edits(const xml::Document& ours, BareDocument& bare)
        : m_bare(bare)
        , m_pairs{{ours.Root(), bare.Root()}}
    {
    }

    void Do(std::string_view line)
    {
        if (line.empty())
        {
            return;
        }
        const char step = line.front();
        line.remove_prefix(1);
        const Pair pair = TakePair(line);
        switch (step)
        {
        case 's':
            Select(pair, line);
            break;
        case 't':
            pair.ours.SetText(line);
            m_bare.SetText(pair.bare, line);
            break;
        case 'c':
            Copy(pair);
            break;
        case 'a':
            Append(pair, TakePair(line));
            break;
        case 'r':
            pair.ours.Remove();
            m_bare.Unlink(pair.bare);
            break;
        default:
            break;
        }
        RequireSame(pair.ours.Text(), BareDocument::Text(pair.bare), "the text of a node");
    }

private:
    // The number at the start of what is left, and one blank behind it.
    Pair TakePair(std::string_view& line)
    {
        std::size_t number = 0;
        while (!line.empty() && line.front() >= '0' && line.front() <= '9')
        {
            number = (number * 10 + static_cast<std::size_t>(line.front() - '0')) % 1000;
            line.remove_prefix(1);
        }
        line.remove_prefix(line.starts_with(' ') ? 1 : 0);
        return m_pairs[number % m_pairs.size()];
    }

    void Select(const Pair& from, std::string_view path)
    {
        const auto ours = from.ours.SelectAll(path);
        const auto bare = m_bare.SelectAll(from.bare, path);
        Require(ours.size() == bare.size(), "how many nodes a path selects");
        for (std::size_t i = 0; i < ours.size(); ++i)
        {
            RequireSame(ours[i].Name(), BareDocument::Name(bare[i]), "the name of a node");
            RequireSame(ours[i].Text(), BareDocument::Text(bare[i]), "the text of a selected node");
        }
        Require(from.ours.Select(path) == (ours.empty() ? xml::Node() : ours.front()), "the first that a path selects");
        if (!ours.empty())
        {
            m_pairs.push_back({ours.back(), bare.back()});
        }
    }

    void Copy(const Pair& pair)
    {
        const auto copy = pair.ours.Clone();
        Require(static_cast<bool>(copy) == (pair.bare->type == XML_ELEMENT_NODE), "what can be copied");
        if (copy && (m_made += pair.ours.Descendants(pair.ours.Name()).size() + 1) <= mostNodes)
        {
            m_pairs.push_back({copy, m_bare.Copy(pair.bare)});
        }
    }

    // A node never goes into itself or what it holds.
    void Append(const Pair& parent, const Pair& child)
    {
        parent.ours.Append(child.ours);
        if (parent.bare->type == XML_ELEMENT_NODE && child.bare->type == XML_ELEMENT_NODE &&
            !BareDocument::IsWithin(parent.bare, child.bare))
        {
            m_bare.Unlink(child.bare);
            xmlAddChild(parent.bare, child.bare);
        }
    }

    BareDocument& m_bare;
    std::vector<Pair> m_pairs;
    std::size_t m_made = 0;
};

void Compare(const xml::Document& ours, const BareDocument& bare)
{
    const auto text = ours.Xml();
    Require(text.empty() == (bare.Root() == nullptr), "whether there is a root");
    if (bare.Root() == nullptr)
    {
        return;
    }
    // Read by libxml2 without dropping anything: what was written must be the very tree.
    const BareDocument again(text, BareDocument::Reading::Exact);
    Require(again.HasTree(), "what is written is XML");
    RequireSame(BareDocument::Canonical(again.Root()), BareDocument::Canonical(bare.Root()), "the tree");
}

} // namespace
} // namespace vellumo::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace vellumo;
    using namespace vellumo::fuzz;
    const auto input = View(data, size);
    const auto text = input.substr(0, input.find(separator));
    auto steps = input.substr(std::min(input.size(), text.size() + separator.size()));
    const auto ours = xml::Document::FromText(text);
    BareDocument bare(text);
    if (bare.GetVerdict() != BareDocument::Verdict::Unknown)
    {
        Require(ours.has_value() == bare.HasTree(), "whether the text is XML");
    }
    // As the engine gets it that wants short lines.
    const auto broken = xml::Document::FromText(xml::WithLineBreaks(text, 3));
    Require(ours.has_value() == broken.has_value(), "whether the text with line breaks is XML");
    RequireSame(broken ? broken->Xml() : "", ours ? ours->Xml() : "", "the tree of the text with line breaks");
    if (!ours || !bare.HasTree())
    {
        return 0;
    }
    Compare(*ours, bare);
    Edits edits(*ours, bare);
    for (std::size_t step = 0; step < mostSteps && !steps.empty(); ++step)
    {
        const auto end = std::min(steps.find('\n'), steps.size());
        edits.Do(steps.substr(0, end));
        steps.remove_prefix(std::min(end + 1, steps.size()));
    }
    Compare(*ours, bare);
    return 0;
}
