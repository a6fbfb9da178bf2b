// A document as libxml2's own tree has it, with names spelled as written, and libxml2's own XPath to select in it.
// Nothing of the library's room `xml` is in it, except the few rules that the library has beyond XML's.
#pragma once

#include <libxml/tree.h>
#include <libxml/xpath.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::fuzz
{

class BareDocument
{
public:
    // How the text was taken. Where libxml2's two ways of reading are known to differ, nothing can be said.
    enum class Verdict
    {
        Refused,
        Accepted,
        Unknown
    };

    enum class Reading
    {
        AsTheLibrary, // UTF-8, whatever the declaration says; texts of white space alone go
        AsAFile,      // the same, decoded by libxml2
        Exact         // UTF-8, all texts
    };

    explicit BareDocument(std::string_view text, Reading reading = Reading::AsTheLibrary);
    ~BareDocument();
    BareDocument(const BareDocument& other);
    BareDocument& operator=(const BareDocument&) = delete;

    [[nodiscard]] Verdict GetVerdict() const noexcept { return m_verdict; }
    [[nodiscard]] bool HasTree() const noexcept { return m_document != nullptr && m_verdict == Verdict::Accepted; }
    [[nodiscard]] xmlNode* Root() const;

    // Paths as the library has them, "a/b", "/a/b", "a/@b"; null when there is none, also for what is no such path.
    [[nodiscard]] xmlNode* Select(xmlNode* from, std::string_view path) const;
    [[nodiscard]] std::vector<xmlNode*> SelectAll(xmlNode* from, std::string_view path) const;
    // The text of all descendants, trimmed; of an attribute its value; "" for null.
    [[nodiscard]] static std::string Text(xmlNode* node);
    [[nodiscard]] std::string Text(xmlNode* from, std::string_view path) const { return Text(Select(from, path)); }
    [[nodiscard]] static std::string Name(const xmlNode* node);

    void SetText(xmlNode* node, std::string_view text);
    // The node stays usable until the document goes.
    void Unlink(xmlNode* node);
    [[nodiscard]] xmlNode* Copy(xmlNode* element);
    // True when `above` is the node or holds it.
    [[nodiscard]] static bool IsWithin(const xmlNode* node, const xmlNode* above);

    // All that counts below the node, in one text; the same for the same tree.
    [[nodiscard]] static std::string Canonical(const xmlNode* node);

private:
    void Judge(bool isWellFormed, bool isNamespaceWellFormed);

    xmlDoc* m_document = nullptr;
    mutable xmlXPathContext* m_paths = nullptr; // made when first needed
    std::vector<xmlNode*> m_loose;              // out of the tree
    Verdict m_verdict = Verdict::Refused;
};

// The text without what XML forbids and without bytes that are no UTF-8, by libxml2's own tables.
[[nodiscard]] std::string OnlyXmlCharacters(std::string_view text);

} // namespace vellumo::fuzz
