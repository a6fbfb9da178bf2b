// XML documents as the library needs them: read a text, select nodes by name, read and set texts, clone, append and
// remove, write the whole text. Names match by their literal prefixed spelling ("SOAP-ENV:Body", "m:…"), never by
// namespace address. White space between elements is dropped on reading.
//
// A `Node` is a small handle; it keeps the document that it belongs to alive. A default-made node is empty: selecting
// from it gives nothing, its text is "", setting it does nothing. Nothing here faults but for lack of memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::xml
{

struct Tree;

class Node
{
public:
    Node() = default;

    explicit operator bool() const noexcept { return m_tree != nullptr; }
    bool operator==(const Node&) const = default;

    // Literal prefixed name of the element; "" for an attribute and the empty node.
    [[nodiscard]] std::string Name() const;

    // `path` is relative ("a/b", "a/@x", "@x") or absolute ("/a/b"); an empty path selects nothing.
    [[nodiscard]] Node Select(std::string_view path) const;
    [[nodiscard]] std::vector<Node> SelectAll(std::string_view path) const;
    // All elements of that name below this one, in document order.
    [[nodiscard]] std::vector<Node> Descendants(std::string_view name) const;
    [[nodiscard]] Node FirstChildElement() const;
    [[nodiscard]] std::vector<Node> ChildElements() const;
    [[nodiscard]] std::vector<std::string> AttributeNames() const;

    // The text that stands in the element itself and not in those below, trimmed.
    [[nodiscard]] std::string OwnText() const;
    // The text of all descendants, trimmed; of an attribute, its value.
    [[nodiscard]] std::string Text() const;
    // Text of the node at `path`, "" when there is none.
    [[nodiscard]] std::string Text(std::string_view path) const { return Select(path).Text(); }
    // Replaces all content. Characters that XML forbids are dropped.
    void SetText(std::string_view text) const;

    // A copy with everything below it, in the same document, not yet in its tree.
    [[nodiscard]] Node Clone() const;
    // Makes `child`, which belongs to the same document, the last child. Nothing happens when it holds this node.
    void Append(const Node& child) const;
    // Takes this node, an element or an attribute, out of its parent; the handle stays usable.
    void Remove() const;

    // The element with everything below it as XML text.
    [[nodiscard]] std::string Xml() const;

private:
    friend class Document;
    using Index = std::uint32_t;
    static constexpr Index noAttribute = std::numeric_limits<Index>::max(); // as the tree has it

    Node(std::shared_ptr<Tree> tree, Index element, Index attribute = noAttribute)
        : m_tree(std::move(tree))
        , m_element(element)
        , m_attribute(attribute)
    {
    }

    [[nodiscard]] Index FirstItem() const noexcept; // element or text

    std::shared_ptr<Tree> m_tree;
    Index m_element = 0;
    Index m_attribute = noAttribute;
};

// What a text may be at most to be read; anything beyond counts as "not XML".
struct Limits
{
    std::size_t bytes = std::size_t{32} * 1024 * 1024;
    std::size_t depth = 200;
    std::size_t attributes = 256; // of one element
    // Elements and attributes of the whole document: each takes some hundred bytes of memory, and four of the text. A
    // reply has some hundreds.
    std::size_t nodes = 250'000;
};

class Document
{
public:
    // Empty when the text is not well-formed XML, uses a prefix outside the element that declares it, has a name or a
    // declaration of a prefix that namespaces forbid, has a document type declaration, or is beyond the limits. A byte
    // order mark may stand at its very start and nowhere else outside the root element. `text` is UTF-8; an encoding
    // that its XML declaration names is not applied, since the text has been decoded already.
    [[nodiscard]] static std::optional<Document> FromText(std::string_view text, const Limits& limits = {});

    // An empty document: no root, every selection empty, text "".
    Document() = default;

    [[nodiscard]] Node Root() const;
    // An absolute path, root element included: "/SOAP-ENV:Envelope/SOAP-ENV:Body".
    [[nodiscard]] Node Select(std::string_view path) const;
    [[nodiscard]] std::vector<Node> SelectAll(std::string_view path) const;
    [[nodiscard]] std::string Xml() const;

private:
    std::shared_ptr<Tree> m_tree;
};

} // namespace vellumo::xml
