// Reads XML with MSXML. The document is loaded as a BSTR, so what its XML declaration says of an encoding is taken out
// first: the text has been decoded already, and some versions refuse a declared encoding that is not theirs.
#include "xml/engine.h"

#include "platform/windows/bstr.h"
#include "platform/windows/com_ptr.h"
#include "platform/windows/variant.h"

#include <msxml2.h>

#include <cwctype>

namespace vellumo::xml
{
namespace
{

using windows::Bstr;
using windows::ComPtr;
using windows::Variant;

// Spelled out, since the import libraries do not carry them. Version 6 is part of Windows since XP; version 3 is what
// remains where somebody removed it.
constexpr CLSID clsidDocument6{0x88d96a05, 0xf192, 0x11d4, {0xa6, 0x5f, 0x00, 0x40, 0x96, 0x32, 0x51, 0xe5}};
constexpr CLSID clsidDocument3{0xf6d90f11, 0x9c73, 0x11d3, {0xb3, 0x2e, 0x00, 0xc0, 0x4f, 0x99, 0x0b, 0xb4}};
constexpr IID iidDocument2{0x2933bf95, 0x7b36, 0x11d2, {0xb2, 0x0e, 0x00, 0xc0, 0x4f, 0x98, 0x3e, 0x60}};

ComPtr<IXMLDOMDocument2> CreateDocument()
{
    ComPtr<IXMLDOMDocument2> document;
    for (const CLSID& clsid : {clsidDocument6, clsidDocument3})
    {
        if (SUCCEEDED(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, iidDocument2, document.PutVoid())))
        {
            break;
        }
    }
    return document;
}

// A property that a version does not know is left as it is: document types have been refused before.
void Prepare(IXMLDOMDocument2& document)
{
    document.put_async(VARIANT_FALSE);
    document.put_validateOnParse(VARIANT_FALSE);
    document.put_resolveExternals(VARIANT_FALSE);
    document.put_preserveWhiteSpace(VARIANT_TRUE);
    document.setProperty(Bstr(std::wstring_view(L"ProhibitDTD")).Get(), Variant(host::Value(true)).Get());
}

bool IsBlank(wchar_t character)
{
    return character == L' ' || character == L'\t' || character == L'\r' || character == L'\n';
}

bool IsEncodingName(std::wstring_view name)
{
    const auto isLetter = [](wchar_t each) { return (each >= L'A' && each <= L'Z') || (each >= L'a' && each <= L'z'); };
    if (name.empty() || !isLetter(name.front()))
    {
        return false;
    }
    for (const wchar_t each : name)
    {
        if (!isLetter(each) && !(each >= L'0' && each <= L'9') && each != L'.' && each != L'_' && each != L'-')
        {
            return false;
        }
    }
    return true;
}

std::size_t SkipBlanks(std::wstring_view text, std::size_t position)
{
    while (position < text.size() && IsBlank(text[position]))
    {
        ++position;
    }
    return position;
}

// Without the encoding of the XML declaration. What is not written as it should be is left for MSXML to refuse.
std::wstring WithoutEncoding(std::wstring text)
{
    constexpr std::wstring_view opening = L"<?xml";
    constexpr std::wstring_view keyword = L"encoding";
    const auto end = text.find(L"?>");
    if (!text.starts_with(opening) || end == std::wstring::npos)
    {
        return text;
    }
    const std::wstring_view declaration(text.data(), end);
    const auto start = declaration.find(keyword, opening.size());
    if (start == std::wstring_view::npos || !IsBlank(declaration[start - 1]))
    {
        return text;
    }
    std::size_t position = SkipBlanks(declaration, start + keyword.size());
    if (position == declaration.size() || declaration[position] != L'=')
    {
        return text;
    }
    position = SkipBlanks(declaration, position + 1);
    if (position == declaration.size() || (declaration[position] != L'"' && declaration[position] != L'\''))
    {
        return text;
    }
    const auto closing = declaration.find(declaration[position], position + 1);
    if (closing == std::wstring_view::npos || !IsEncodingName(declaration.substr(position + 1, closing - position - 1)))
    {
        return text;
    }
    text.erase(start, closing + 1 - start);
    return text;
}

// MSXML passes over white space in front of the XML declaration, which makes a text not well-formed.
bool BeginsWell(std::wstring_view text)
{
    const std::size_t start = SkipBlanks(text, 0);
    constexpr std::wstring_view opening = L"<?xml";
    const std::wstring_view rest = text.substr(start);
    return start == 0 || !rest.starts_with(opening) || rest.size() == opening.size() || !IsBlank(rest[opening.size()]);
}

std::string NameOf(IXMLDOMNode& node)
{
    Bstr name;
    return SUCCEEDED(node.get_nodeName(name.Put())) ? name.Text() : std::string();
}

std::string ValueOf(IXMLDOMNode& node)
{
    Variant value;
    return SUCCEEDED(node.get_nodeValue(value.Put())) ? value.ToText() : std::string();
}

void ReportAttributes(IXMLDOMNode& element, Builder& builder)
{
    ComPtr<IXMLDOMNamedNodeMap> attributes;
    if (FAILED(element.get_attributes(attributes.Put())) || !attributes)
    {
        return;
    }
    ComPtr<IXMLDOMNode> attribute;
    while (attributes->nextNode(attribute.Put()) == S_OK && attribute)
    {
        builder.Attribute(NameOf(*attribute), ValueOf(*attribute));
    }
}

// True for an element, which the caller has to end.
bool Report(IXMLDOMNode& node, Builder& builder)
{
    DOMNodeType type = NODE_INVALID;
    node.get_nodeType(&type);
    switch (type)
    {
    case NODE_ELEMENT:
        builder.StartElement(NameOf(node));
        ReportAttributes(node, builder);
        return true;
    case NODE_TEXT:
    case NODE_CDATA_SECTION:
        builder.Text(ValueOf(node));
        return false;
    default:
        return false;
    }
}

// Document order without recursion: the depth of a document must not become the depth of the host's stack.
void ReportTree(ComPtr<IXMLDOMNode> node, Builder& builder)
{
    for (int depth = 0; node;)
    {
        ComPtr<IXMLDOMNode> next;
        if (Report(*node, builder))
        {
            if (node->get_firstChild(next.Put()) == S_OK && next)
            {
                node = std::move(next);
                ++depth;
                continue;
            }
            builder.EndElement();
        }
        while (depth > 0 && (node->get_nextSibling(next.Put()) != S_OK || !next))
        {
            ComPtr<IXMLDOMNode> parent;
            node->get_parentNode(parent.Put());
            node = std::move(parent);
            builder.EndElement();
            --depth;
        }
        node = std::move(next);
    }
}

} // namespace

bool Read(std::string_view text, Builder& builder)
{
    const ComPtr<IXMLDOMDocument2> document = CreateDocument();
    const std::wstring wide = WithoutEncoding(windows::ToWide(text));
    if (!document || !BeginsWell(wide))
    {
        return false;
    }
    Prepare(*document);
    VARIANT_BOOL loaded = VARIANT_FALSE;
    if (FAILED(document->loadXML(Bstr(wide).Get(), &loaded)) || loaded == VARIANT_FALSE)
    {
        return false;
    }
    ComPtr<IXMLDOMElement> root;
    if (document->get_documentElement(root.Put()) != S_OK || !root)
    {
        return false;
    }
    ReportTree(ComPtr<IXMLDOMNode>(root.Get()), builder);
    return true;
}

} // namespace vellumo::xml
