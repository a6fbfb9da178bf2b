#include "fuzz/bare_document.h"

#include <libxml/chvalid.h>
#include <libxml/parser.h>
#include <libxml/xmlerror.h>
#include <libxml/xpathInternals.h>

#include <algorithm>
#include <cstring>

namespace vellumo::fuzz
{
namespace
{

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

// The library's own limits: `xml/document.h`.
constexpr std::size_t deepest = 200;
constexpr std::size_t mostAttributes = 256;

const xmlChar* Chars(const std::string& text)
{
    return reinterpret_cast<const xmlChar*>(text.c_str());
}

std::string_view View(const xmlChar* text)
{
    return text == nullptr ? "" : reinterpret_cast<const char*>(text);
}

std::string Spelled(const xmlNs* space, const xmlChar* name)
{
    return space != nullptr && space->prefix != nullptr
               ? std::string(View(space->prefix)).append(":").append(View(name))
               : std::string(View(name));
}

bool IsText(const xmlNode* node)
{
    return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE;
}

bool HasUndeclaredPrefix(const xmlNode* element)
{
    bool found = element->ns == nullptr && View(element->name).find(':') != std::string_view::npos;
    for (const xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next)
    {
        found = found || (attribute->ns == nullptr && View(attribute->name).find(':') != std::string_view::npos);
    }
    return found;
}

struct Looked
{
    bool isDeep = false;
    bool isWide = false;
    bool lacksDeclaration = false;
    bool namesSpecial = false; // "xml" or "xmlns" declared or used as a prefix: readers differ over them
};

void Look(const xmlNode* element, std::size_t depth, Looked& looked)
{
    std::size_t attributes = 0;
    for (const xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next)
    {
        ++attributes;
    }
    for (const xmlNs* space = element->nsDef; space != nullptr; space = space->next)
    {
        ++attributes;
        looked.namesSpecial = looked.namesSpecial || View(space->prefix).starts_with("xml");
    }
    looked.isDeep = looked.isDeep || depth > deepest;
    looked.isWide = looked.isWide || attributes > mostAttributes;
    looked.lacksDeclaration = looked.lacksDeclaration || HasUndeclaredPrefix(element);
    for (const xmlNode* child = element->children; child != nullptr; child = child->next)
    {
        if (child->type == XML_ELEMENT_NODE)
        {
            Look(child, depth + 1, looked);
        }
    }
}

// Names become one text as written, declarations become attributes, comments go, and so do texts of white space alone
// if they are to: what is left is what the library keeps.
void Normalise(xmlNode* element, bool dropsBlanks)
{
    for (xmlNs* space = element->nsDef; space != nullptr; space = space->next)
    {
        const auto name = space->prefix == nullptr ? "xmlns" : "xmlns:" + std::string(View(space->prefix));
        xmlNewProp(element, Chars(name), space->href);
    }
    for (xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next)
    {
        const auto name = Spelled(attribute->ns, attribute->name);
        attribute->ns = nullptr;
        xmlNodeSetName(reinterpret_cast<xmlNode*>(attribute), Chars(name));
    }
    std::string run;
    std::vector<xmlNode*> gone;
    const auto flush = [&](xmlNode* before)
    {
        if (!run.empty() && (!dropsBlanks || run.find_first_not_of(blanks) != std::string::npos))
        {
            xmlNode* const text = xmlNewDocTextLen(element->doc, Chars(run), static_cast<int>(run.size()));
            // Not through libxml2, which would join it with its neighbours.
            text->parent = element;
            text->next = before;
            text->prev = before == nullptr ? element->last : before->prev;
            (text->prev == nullptr ? element->children : text->prev->next) = text;
            (before == nullptr ? element->last : before->prev) = text;
        }
        run.clear();
    };
    for (xmlNode* child = element->children; child != nullptr; child = child->next)
    {
        if (child->type == XML_ELEMENT_NODE)
        {
            flush(child);
            Normalise(child, dropsBlanks);
        }
        else
        {
            run += IsText(child) ? View(child->content) : std::string_view();
            gone.push_back(child);
        }
    }
    flush(nullptr);
    for (xmlNode* const child : gone)
    {
        xmlUnlinkNode(child);
        xmlFreeNode(child);
    }
    const auto name = Spelled(element->ns, element->name);
    xmlNodeSetName(element, Chars(name));
}

// Behind `Normalise`, since names above still use them meanwhile.
void DropNamespaces(xmlNode* element)
{
    element->ns = nullptr;
    xmlFreeNsList(element->nsDef);
    element->nsDef = nullptr;
    for (xmlNode* child = element->children; child != nullptr; child = child->next)
    {
        if (child->type == XML_ELEMENT_NODE)
        {
            DropNamespaces(child);
        }
    }
}

void AppendText(const xmlNode* node, std::string& out)
{
    if (IsText(node))
    {
        out += View(node->content);
    }
    for (const xmlNode* child = node->children; child != nullptr; child = child->next)
    {
        AppendText(child, out);
    }
}

void AppendCanonical(const xmlNode* element, std::string& out)
{
    out.append("<").append(View(element->name));
    std::vector<std::string> attributes;
    for (const xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next)
    {
        auto& text = attributes.emplace_back(std::string(View(attribute->name)).append("="));
        AppendText(reinterpret_cast<const xmlNode*>(attribute), text);
    }
    std::sort(attributes.begin(), attributes.end());
    for (const auto& attribute : attributes)
    {
        out.append(" ").append(attribute);
    }
    out += '>';
    for (const xmlNode* child = element->children; child != nullptr; child = child->next)
    {
        if (IsText(child))
        {
            out += View(child->content);
        }
        else
        {
            AppendCanonical(child, out);
        }
    }
    out.append("</").append(View(element->name)).append(">");
}

// Kept for a while, since to make one takes longer than most inputs; not for ever, since it keeps all names that it has
// met.
xmlParserCtxt* Parser()
{
    constexpr int longest = 1000;
    static std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> parser(nullptr, &xmlFreeParserCtxt);
    static int uses = 0;
    if (uses++ % longest == 0)
    {
        parser.reset(xmlNewParserCtxt());
    }
    return parser.get();
}

// The library's path as XPath; "" for what is none. Names go in as literals.
std::string XPathOf(std::string_view path)
{
    if (path.empty() || path.ends_with('/') || path.find('"') != std::string_view::npos)
    {
        return {};
    }
    std::string xpath = path.front() == '/' ? "/" : "";
    path.remove_prefix(path.front() == '/' ? 1 : 0);
    while (true)
    {
        const auto slash = path.find('/');
        auto step = path.substr(0, slash);
        const bool isAttribute = step.starts_with('@');
        step.remove_prefix(isAttribute ? 1 : 0);
        if (step.empty() || (isAttribute && slash != std::string_view::npos))
        {
            return {};
        }
        xpath.append(isAttribute ? "@*" : "*").append("[name()=\"").append(step).append("\"]");
        if (slash == std::string_view::npos)
        {
            return xpath;
        }
        xpath += '/';
        path.remove_prefix(slash + 1);
    }
}

} // namespace

BareDocument::BareDocument(std::string_view text, Reading reading)
{
    const bool isDecoded = reading != Reading::AsAFile;
    xmlSetStructuredErrorFunc(nullptr, [](void*, xmlErrorPtr) {});
    const bool hasMark = text.starts_with(byteOrderMark);
    const auto behind = hasMark && isDecoded ? text.substr(byteOrderMark.size()) : text;
    xmlParserCtxt* const parser = Parser();
    const int options = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_HUGE | XML_PARSE_NOENT |
                        (isDecoded ? XML_PARSE_IGNORE_ENC : 0);
    const bool isText = behind.find('\0') == std::string_view::npos || !isDecoded;
    m_document = behind.empty() || !isText ? nullptr
                                           : xmlCtxtReadMemory(parser, behind.data(), static_cast<int>(behind.size()),
                                                               nullptr, isDecoded ? "UTF-8" : nullptr, options);
    Judge(m_document != nullptr && parser->wellFormed == 1, parser->nsWellFormed == 1);
    // A byte order mark outside the root element: libxml2 passes over it in places, the library never does.
    if (reading == Reading::AsTheLibrary && m_verdict == Verdict::Accepted &&
        behind.find(byteOrderMark) != std::string_view::npos)
    {
        m_verdict = Verdict::Unknown;
    }
    if (HasTree())
    {
        Normalise(xmlDocGetRootElement(m_document), reading != Reading::Exact);
        DropNamespaces(xmlDocGetRootElement(m_document));
    }
}

BareDocument::BareDocument(const BareDocument& other)
    : m_document(xmlCopyDoc(other.m_document, 1))
    , m_verdict(other.m_verdict)
{
}

BareDocument::~BareDocument()
{
    // One that was put into another one goes with that.
    m_loose.erase(std::remove_if(m_loose.begin(), m_loose.end(), [](xmlNode* node) { return node->parent != nullptr; }),
                  m_loose.end());
    for (xmlNode* const node : m_loose)
    {
        node->type == XML_ATTRIBUTE_NODE ? xmlFreeProp(reinterpret_cast<xmlAttr*>(node)) : xmlFreeNode(node);
    }
    xmlXPathFreeContext(m_paths);
    xmlFreeDoc(m_document);
}

void BareDocument::Judge(bool isWellFormed, bool isNamespaceWellFormed)
{
    if (!isWellFormed || m_document->intSubset != nullptr)
    {
        return;
    }
    Looked looked;
    Look(xmlDocGetRootElement(m_document), 1, looked);
    if (looked.isDeep || looked.isWide)
    {
        return;
    }
    // What the library asks of prefixes is less than what namespaces ask: only that they are declared.
    m_verdict = isNamespaceWellFormed && !looked.lacksDeclaration && !looked.namesSpecial ? Verdict::Accepted
                                                                                          : Verdict::Unknown;
}

xmlNode* BareDocument::Root() const
{
    return HasTree() ? xmlDocGetRootElement(m_document) : nullptr;
}

std::vector<xmlNode*> BareDocument::SelectAll(xmlNode* from, std::string_view path) const
{
    const auto xpath = XPathOf(path);
    if (from == nullptr || from->type == XML_ATTRIBUTE_NODE || xpath.empty())
    {
        return {};
    }
    if (path.front() == '/' && Root() == nullptr)
    {
        return {};
    }
    if (m_paths == nullptr)
    {
        m_paths = xmlXPathNewContext(m_document);
        xmlXPathContextSetCache(m_paths, 1, -1, 0);
    }
    m_paths->node = from;
    xmlXPathObject* const found = xmlXPathEvalExpression(Chars(xpath), m_paths);
    std::vector<xmlNode*> nodes;
    if (found != nullptr && found->nodesetval != nullptr)
    {
        nodes.assign(found->nodesetval->nodeTab, found->nodesetval->nodeTab + found->nodesetval->nodeNr);
    }
    xmlXPathFreeObject(found);
    return nodes;
}

xmlNode* BareDocument::Select(xmlNode* from, std::string_view path) const
{
    const auto nodes = SelectAll(from, path);
    return nodes.empty() ? nullptr : nodes.front();
}

std::string BareDocument::Text(xmlNode* node)
{
    std::string text;
    if (node != nullptr)
    {
        AppendText(node, text);
        if (node->type != XML_ATTRIBUTE_NODE)
        {
            text.erase(0, text.find_first_not_of(blanks));
            text.erase(text.find_last_not_of(blanks) + 1);
        }
    }
    return text;
}

std::string BareDocument::Name(const xmlNode* node)
{
    return node == nullptr || node->type == XML_ATTRIBUTE_NODE ? std::string() : std::string(View(node->name));
}

void BareDocument::SetText(xmlNode* node, std::string_view text)
{
    while (node->children != nullptr)
    {
        Unlink(node->children);
    }
    const auto clean = OnlyXmlCharacters(text);
    if (!clean.empty())
    {
        xmlAddChild(node, xmlNewDocTextLen(m_document, Chars(clean), static_cast<int>(clean.size())));
    }
}

void BareDocument::Unlink(xmlNode* node)
{
    xmlUnlinkNode(node);
    if (std::find(m_loose.begin(), m_loose.end(), node) == m_loose.end())
    {
        m_loose.push_back(node);
    }
}

xmlNode* BareDocument::Copy(xmlNode* element)
{
    xmlNode* const copy = xmlDocCopyNode(element, m_document, 1);
    m_loose.push_back(copy);
    return copy;
}

bool BareDocument::IsWithin(const xmlNode* node, const xmlNode* above)
{
    while (node != nullptr && node != above)
    {
        node = node->parent;
    }
    return node != nullptr;
}

std::string BareDocument::Canonical(const xmlNode* node)
{
    std::string text;
    AppendCanonical(node, text);
    return text;
}

std::string OnlyXmlCharacters(std::string_view text)
{
    std::string clean;
    for (std::size_t at = 0; at < text.size();)
    {
        int length = static_cast<int>(std::min<std::size_t>(text.size() - at, 4));
        const int code = xmlGetUTF8Char(reinterpret_cast<const unsigned char*>(text.data() + at), &length);
        // It takes the middle of a character for one, and longer forms than needed.
        const bool isLead = (static_cast<unsigned char>(text[at]) & 0xC0U) != 0x80;
        const bool isShortest = isLead && code >= (length == 1   ? 0
                                                   : length == 2 ? 0x80
                                                   : length == 3 ? 0x800
                                                                 : 0x10000);
        if (code >= 0 && isShortest && xmlIsCharQ(static_cast<unsigned>(code)))
        {
            clean.append(text.substr(at, static_cast<std::size_t>(length)));
            at += static_cast<std::size_t>(length);
        }
        else
        {
            ++at;
        }
    }
    return clean;
}

} // namespace vellumo::fuzz
