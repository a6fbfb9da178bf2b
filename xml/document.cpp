#include "xml/document.h"

#include "xml/characters.h"
#include "xml/declaration.h"
#include "xml/engine.h"
#include "xml/guard.h"
#include "xml/tree.h"

namespace vellumo::xml
{

std::optional<Document> Document::FromText(std::string_view text, const Limits& limits)
{
    if (text.starts_with(byteOrderMark))
    {
        text.remove_prefix(byteOrderMark.size());
    }
    // The whole of it first: what is too large is not looked at.
    const auto content = text.size() <= limits.bytes ? TextBehindDeclaration(text) : std::nullopt;
    if (!content || !IsAcceptable(*content, limits))
    {
        return std::nullopt;
    }
    Document document;
    document.m_tree = std::make_shared<Tree>();
    TreeBuilder builder(*document.m_tree);
    if (!Read(*content, builder) || document.m_tree->root == Tree::none)
    {
        return std::nullopt;
    }
    return document;
}

Node Document::Root() const
{
    return m_tree && m_tree->root != Tree::none ? Node(m_tree, m_tree->root) : Node();
}

Node Document::Select(std::string_view path) const
{
    return Root().Select(path);
}

std::vector<Node> Document::SelectAll(std::string_view path) const
{
    return Root().SelectAll(path);
}

std::string Document::Xml() const
{
    return Root().Xml();
}

} // namespace vellumo::xml
