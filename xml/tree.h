// The storage behind `Document` and `Node`: all nodes of a document in one sequence, linked by index, so that handles
// stay valid while nodes are added. It grows by pieces: a list of patients takes hundreds of megabytes, which a 32-bit
// process has, but not in one block, and not twice while it grows. A removed node stays in it, out of reach, until the
// document goes, and so do a replaced text's characters.
#pragma once

#include "xml/engine.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vellumo::xml
{

// Characters one behind the other, in pieces; each text stays where it is until all of them go.
class Characters
{
public:
    // The copy.
    [[nodiscard]] std::string_view Keep(std::string_view text);

private:
    std::vector<std::unique_ptr<char[]>> m_pieces;
    char* m_next = nullptr;
    std::size_t m_left = 0;
};

struct Tree
{
    using Index = std::uint32_t;
    static constexpr Index none = std::numeric_limits<Index>::max();

    struct Attribute
    {
        std::string_view name; // empty: removed; it keeps its place, since handles know their attribute by it
        std::string_view value;
    };

    struct Item
    {
        std::string_view name; // empty: a text
        std::string_view text; // of a text
        std::vector<Attribute> attributes;
        Index parent = none;
        Index firstChild = none;
        Index lastChild = none;
        Index previous = none;
        Index next = none;

        [[nodiscard]] bool IsElement() const noexcept { return !name.empty(); }
    };

    // By pieces of some dozens: a block for each would lie between all that comes and goes while a long list is read,
    // and the heap would look longer for every one. The same holds for names and texts, which stand in `characters`.
    class Items
    {
    public:
        [[nodiscard]] std::size_t Count() const noexcept { return m_count; }
        Item& operator[](Index item) noexcept { return m_pieces[item / perPiece][item % perPiece]; }
        const Item& operator[](Index item) const noexcept { return m_pieces[item / perPiece][item % perPiece]; }
        void Add(Item&& item);

    private:
        static constexpr std::size_t perPiece = 64;

        std::vector<std::unique_ptr<Item[]>> m_pieces;
        std::size_t m_count = 0;
    };

    Characters characters;
    Items items;
    Index root = none;

    Index Add(Item&& item);
    void Link(Index parent, Index child); // as last child
    void Unlink(Index item);
    void UnlinkChildren(Index parent);
    Index Copy(Index item); // with everything below, not linked

    // True when `above` is the item or holds it.
    [[nodiscard]] bool IsWithin(Index item, Index above) const;
    // The next element in document order below `top`, starting from `top` itself; `none` at the end.
    [[nodiscard]] Index NextInOrder(Index item, Index top) const;

    void AppendText(Index item, std::string& out) const; // of all descendants
    void AppendXml(Index item, std::string& out) const;
};

// Makes the tree of what an engine reports. White space alone between two tags is dropped; declarations of prefixes
// come before an element's other attributes.
class TreeBuilder final : public Builder
{
public:
    explicit TreeBuilder(Tree& tree)
        : m_tree(tree)
    {
    }

    void StartElement(std::string_view name) override;
    void Attribute(std::string_view name, std::string_view value) override;
    void Text(std::string_view text) override;
    void EndElement() override;

private:
    void FlushText();

    Tree& m_tree;
    Tree::Index m_current = Tree::none;
    std::size_t m_declarations = 0; // of prefixes, at the current element
    std::string m_text;
};

} // namespace vellumo::xml
