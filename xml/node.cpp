#include "xml/characters.h"
#include "xml/document.h"
#include "xml/tree.h"

#include <algorithm>

namespace vellumo::xml
{
namespace
{

// Cuts the first step off the path.
std::string_view TakeStep(std::string_view& path)
{
    const auto slash = path.find('/');
    const auto step = path.substr(0, slash);
    path = slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1);
    return step;
}

} // namespace

std::string Node::Name() const
{
    return m_tree && m_attribute == noAttribute ? std::string(m_tree->items[m_element].name) : std::string();
}

std::vector<Node> Node::SelectAll(std::string_view path) const
{
    if (!m_tree || m_attribute != noAttribute || path.empty() || path.ends_with('/'))
    {
        return {};
    }
    if (path.front() == '/')
    {
        path.remove_prefix(1);
        const auto step = TakeStep(path);
        // "/a//b" is no path, and what stands behind "/a/" is none of the root's.
        if (m_tree->root == Tree::none || m_tree->items[m_tree->root].name != step || path.starts_with('/'))
        {
            return {};
        }
        const Node root(m_tree, m_tree->root);
        return path.empty() ? std::vector{root} : root.SelectAll(path);
    }

    std::vector<Tree::Index> found = {m_element};
    while (!path.empty())
    {
        const auto step = TakeStep(path);
        if (step.starts_with('@'))
        {
            const auto name = step.substr(1);
            std::vector<Node> attributes;
            for (const auto element : path.empty() && !name.empty() ? found : std::vector<Tree::Index>())
            {
                const auto& list = m_tree->items[element].attributes;
                const auto match = std::ranges::find(list, name, &Tree::Attribute::name);
                if (match != list.end())
                {
                    attributes.push_back(Node(m_tree, element, static_cast<Index>(match - list.begin())));
                }
            }
            return attributes;
        }
        std::vector<Tree::Index> below;
        for (const auto element : found)
        {
            for (auto child = m_tree->items[element].firstChild; child != Tree::none; child = m_tree->items[child].next)
            {
                if (m_tree->items[child].IsElement() && m_tree->items[child].name == step)
                {
                    below.push_back(child);
                }
            }
        }
        found = std::move(below);
    }

    std::vector<Node> nodes;
    nodes.reserve(found.size());
    for (const auto element : found)
    {
        nodes.push_back(Node(m_tree, element));
    }
    return nodes;
}

Node Node::Select(std::string_view path) const
{
    auto nodes = SelectAll(path);
    return nodes.empty() ? Node() : std::move(nodes.front());
}

std::vector<Node> Node::Descendants(std::string_view name) const
{
    std::vector<Node> nodes;
    if (m_tree && m_attribute == noAttribute)
    {
        for (auto item = m_tree->NextInOrder(m_element, m_element); item != Tree::none;
             item = m_tree->NextInOrder(item, m_element))
        {
            if (m_tree->items[item].name == name)
            {
                nodes.push_back(Node(m_tree, item));
            }
        }
    }
    return nodes;
}

Node::Index Node::FirstItem() const noexcept
{
    return m_tree && m_attribute == noAttribute ? m_tree->items[m_element].firstChild : Tree::none;
}

Node Node::FirstChildElement() const
{
    for (auto child = FirstItem(); child != Tree::none; child = m_tree->items[child].next)
    {
        if (m_tree->items[child].IsElement())
        {
            return {m_tree, child};
        }
    }
    return {};
}

std::vector<Node> Node::ChildElements() const
{
    std::vector<Node> children;
    for (auto child = FirstItem(); child != Tree::none; child = m_tree->items[child].next)
    {
        if (m_tree->items[child].IsElement())
        {
            children.push_back(Node(m_tree, child));
        }
    }
    return children;
}

std::vector<std::string> Node::AttributeNames() const
{
    std::vector<std::string> names;
    if (m_tree && m_attribute == noAttribute)
    {
        for (const auto& attribute : m_tree->items[m_element].attributes)
        {
            names.emplace_back(attribute.name);
        }
        std::erase(names, "");
    }
    return names;
}

std::string Node::OwnText() const
{
    std::string text;
    for (auto child = FirstItem(); child != Tree::none; child = m_tree->items[child].next)
    {
        text += m_tree->items[child].text;
    }
    return std::string(Trimmed(text));
}

std::string Node::Text() const
{
    if (!m_tree)
    {
        return {};
    }
    if (m_attribute != noAttribute)
    {
        return std::string(m_tree->items[m_element].attributes[m_attribute].value);
    }
    std::string text;
    m_tree->AppendText(m_element, text);
    return std::string(Trimmed(text));
}

void Node::SetText(std::string_view text) const
{
    if (!m_tree)
    {
        return;
    }
    const auto clean = m_tree->characters.Keep(WithoutForbiddenCharacters(text));
    if (m_attribute != noAttribute)
    {
        m_tree->items[m_element].attributes[m_attribute].value = clean;
        return;
    }
    m_tree->UnlinkChildren(m_element);
    if (!clean.empty())
    {
        Tree::Item item;
        item.text = clean;
        m_tree->Link(m_element, m_tree->Add(std::move(item)));
    }
}

Node Node::Clone() const
{
    return m_tree && m_attribute == noAttribute ? Node(m_tree, m_tree->Copy(m_element)) : Node();
}

void Node::Append(const Node& child) const
{
    if (m_tree && m_attribute == noAttribute && child.m_tree == m_tree && child.m_attribute == noAttribute &&
        !m_tree->IsWithin(m_element, child.m_element))
    {
        m_tree->Unlink(child.m_element);
        m_tree->Link(m_element, child.m_element);
    }
}

void Node::Remove() const
{
    if (!m_tree)
    {
        return;
    }
    if (m_attribute != noAttribute)
    {
        m_tree->items[m_element].attributes[m_attribute].name = {};
    }
    else
    {
        m_tree->Unlink(m_element);
    }
}

std::string Node::Xml() const
{
    std::string text;
    if (m_tree && m_attribute == noAttribute)
    {
        m_tree->AppendXml(m_element, text);
    }
    return text;
}

} // namespace vellumo::xml
