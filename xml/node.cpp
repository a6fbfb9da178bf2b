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

// `found` is told of each place that the path leads to, in document order: the element, and which of its attributes,
// or none. It returns whether that is enough.
template <class Found>
bool Follow(const Tree& tree, Tree::Index element, std::string_view path, const Found& found)
{
    const auto step = TakeStep(path);
    if (step.starts_with('@'))
    {
        const auto& attributes = tree.items[element].attributes;
        const auto match = std::ranges::find(attributes, step.substr(1), &Tree::Attribute::name);
        return step.size() > 1 && path.empty() && match != attributes.end() &&
               found(element, static_cast<Tree::Index>(match - attributes.begin()));
    }
    for (auto child = tree.items[element].firstChild; child != Tree::none; child = tree.items[child].next)
    {
        const auto& item = tree.items[child];
        if (item.IsElement() && item.name == step &&
            (path.empty() ? found(child, Tree::none) : Follow(tree, child, path, found)))
        {
            return true;
        }
    }
    return false;
}

// The same for a path that may be absolute, or none.
template <class Found>
void FollowFrom(const Tree& tree, Tree::Index element, std::string_view path, const Found& found)
{
    if (path.empty() || path.ends_with('/'))
    {
        return;
    }
    if (path.front() != '/')
    {
        Follow(tree, element, path, found);
        return;
    }
    path.remove_prefix(1);
    const auto step = TakeStep(path);
    if (tree.root == Tree::none || tree.items[tree.root].name != step)
    {
        return;
    }
    if (path.empty())
    {
        found(tree.root, Tree::none);
    }
    else if (path.front() != '/') // "/a//b" is no path
    {
        Follow(tree, tree.root, path, found);
    }
}

} // namespace

std::string Node::Name() const
{
    return m_tree && m_attribute == noAttribute ? std::string(m_tree->items[m_element].name) : std::string();
}

std::vector<Node> Node::SelectAll(std::string_view path) const
{
    std::vector<Node> nodes;
    if (m_tree && m_attribute == noAttribute)
    {
        FollowFrom(*m_tree, m_element, path,
                   [&](Index element, Index attribute)
                   {
                       nodes.push_back(Node(m_tree, element, attribute));
                       return false;
                   });
    }
    return nodes;
}

Node Node::Select(std::string_view path) const
{
    Node node;
    if (m_tree && m_attribute == noAttribute)
    {
        FollowFrom(*m_tree, m_element, path,
                   [&](Index element, Index attribute)
                   {
                       node = Node(m_tree, element, attribute);
                       return true;
                   });
    }
    return node;
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
