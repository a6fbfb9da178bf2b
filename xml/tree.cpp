#include "xml/tree.h"

#include "xml/characters.h"

#include <algorithm>
#include <stdexcept>

namespace vellumo::xml
{
namespace
{

void AppendEscaped(std::string_view text, bool inAttribute, std::string& out)
{
    for (const char character : text)
    {
        switch (character)
        {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '\r': // a bare one would be read back as a line feed
            out += "&#13;";
            break;
        case '"':
            out += inAttribute ? "&quot;" : "\"";
            break;
        case '\n':
            out += inAttribute ? "&#10;" : "\n";
            break;
        case '\t':
            out += inAttribute ? "&#9;" : "\t";
            break;
        default:
            out += character;
        }
    }
}

constexpr std::size_t firstPiece = 1024;
constexpr std::size_t mostDoublings = 6;

} // namespace

std::string_view Characters::Keep(std::string_view text)
{
    if (text.size() > m_left)
    {
        const auto size = std::max(text.size(), firstPiece << std::min(m_pieces.size(), mostDoublings));
        m_pieces.push_back(std::make_unique_for_overwrite<char[]>(size));
        m_next = m_pieces.back().get();
        m_left = size;
    }
    const std::string_view kept(m_next, text.copy(m_next, text.size()));
    m_next += text.size();
    m_left -= text.size();
    return kept;
}

void Tree::Items::Add(Item&& item)
{
    if (m_count == m_pieces.size() * perPiece)
    {
        m_pieces.push_back(std::make_unique<Item[]>(perPiece));
    }
    m_pieces.back()[m_count++ % perPiece] = std::move(item);
}

Tree::Index Tree::Add(Item&& item)
{
    if (items.Count() >= none)
    {
        throw std::length_error("documento XML troppo grande");
    }
    items.Add(std::move(item));
    return static_cast<Index>(items.Count() - 1);
}

void Tree::Link(Index parent, Index child)
{
    Item& above = items[parent];
    Item& below = items[child];
    below.parent = parent;
    below.previous = above.lastChild;
    below.next = none;
    (above.lastChild == none ? above.firstChild : items[above.lastChild].next) = child;
    above.lastChild = child;
}

void Tree::Unlink(Index item)
{
    Item& taken = items[item];
    if (taken.parent != none)
    {
        (taken.previous == none ? items[taken.parent].firstChild : items[taken.previous].next) = taken.next;
        (taken.next == none ? items[taken.parent].lastChild : items[taken.next].previous) = taken.previous;
    }
    else if (root == item)
    {
        root = none;
    }
    taken.parent = taken.previous = taken.next = none;
}

void Tree::UnlinkChildren(Index parent)
{
    while (items[parent].firstChild != none)
    {
        Unlink(items[parent].firstChild);
    }
}

Tree::Index Tree::Copy(Index item)
{
    Item copy;
    copy.name = items[item].name;
    copy.text = items[item].text;
    copy.attributes = items[item].attributes;
    const Index made = Add(std::move(copy));
    for (Index child = items[item].firstChild; child != none; child = items[child].next)
    {
        Link(made, Copy(child)); // as deep as the document, which is bounded
    }
    return made;
}

bool Tree::IsWithin(Index item, Index above) const
{
    while (item != none && item != above)
    {
        item = items[item].parent;
    }
    return item == above;
}

Tree::Index Tree::NextInOrder(Index item, Index top) const
{
    do
    {
        if (items[item].firstChild != none)
        {
            item = items[item].firstChild;
        }
        else
        {
            while (item != top && items[item].next == none)
            {
                item = items[item].parent;
            }
            if (item == top)
            {
                return none;
            }
            item = items[item].next;
        }
    } while (!items[item].IsElement());
    return item;
}

void Tree::AppendText(Index item, std::string& out) const
{
    out += items[item].text;
    for (Index child = items[item].firstChild; child != none; child = items[child].next)
    {
        AppendText(child, out);
    }
}

void Tree::AppendXml(Index item, std::string& out) const
{
    const Item& node = items[item];
    if (!node.IsElement())
    {
        AppendEscaped(node.text, false, out);
        return;
    }
    out += '<';
    out += node.name;
    for (const Attribute& attribute : node.attributes)
    {
        if (attribute.name.empty())
        {
            continue;
        }
        out += ' ';
        out += attribute.name;
        out += "=\"";
        AppendEscaped(attribute.value, true, out);
        out += '"';
    }
    if (node.firstChild == none)
    {
        out += "/>";
        return;
    }
    out += '>';
    for (Index child = node.firstChild; child != none; child = items[child].next)
    {
        AppendXml(child, out);
    }
    out += "</";
    out += node.name;
    out += '>';
}

void TreeBuilder::StartElement(std::string_view name)
{
    FlushText();
    Tree::Item element;
    element.name = m_tree.characters.Keep(name);
    const Tree::Index made = m_tree.Add(std::move(element));
    if (m_current == Tree::none)
    {
        m_tree.root = made;
    }
    else
    {
        m_tree.Link(m_current, made);
    }
    m_current = made;
    m_declarations = 0;
}

void TreeBuilder::Attribute(std::string_view name, std::string_view value)
{
    // Engines report declarations of prefixes where they stand, or behind all others.
    const bool isDeclaration = name == "xmlns" || name.starts_with("xmlns:");
    auto& attributes = m_tree.items[m_current].attributes;
    const auto place =
        isDeclaration ? attributes.begin() + static_cast<std::ptrdiff_t>(m_declarations++) : attributes.end();
    attributes.insert(place, {m_tree.characters.Keep(name), m_tree.characters.Keep(value)});
}

void TreeBuilder::Text(std::string_view text)
{
    m_text += text;
}

void TreeBuilder::EndElement()
{
    FlushText();
    m_current = m_tree.items[m_current].parent;
}

void TreeBuilder::FlushText()
{
    if (m_current != Tree::none && m_text.find_first_not_of(blanks) != std::string::npos)
    {
        Tree::Item item;
        item.text = m_tree.characters.Keep(m_text);
        m_tree.Link(m_current, m_tree.Add(std::move(item)));
    }
    m_text.clear();
}

} // namespace vellumo::xml
