// Reads XML with MSXML's SAX reader: it reports what it finds as it goes, so there is no document of its own to walk
// or to free, and it can be told to leave namespaces alone, which its DOM cannot.
//
// The text goes in as a BSTR without its XML declaration: it has been decoded already, whatever encoding it declares.
#include "xml/engine.h"

#include "platform/windows/adapters/variant.h"
#include "platform/windows/system/com_ptr.h"
#include "platform/windows/system/text.h"

#include <msxml2.h>

#include <algorithm>
#include <exception>
#include <new>
#include <optional>
#include <utility>

namespace vellumo::xml
{
namespace
{

using windows::ComPtr;
using windows::Variant;

// Spelled out, since the import libraries do not carry them. Version 6 is part of Windows since XP; version 3 is what
// remains where somebody removed it.
constexpr CLSID clsidReader6{0x88d96a0c, 0xf192, 0x11d4, {0xa6, 0x5f, 0x00, 0x40, 0x96, 0x32, 0x51, 0xe5}};
constexpr CLSID clsidReader3{0x3124c396, 0xfb13, 0x4836, {0xa6, 0xad, 0x13, 0x17, 0xf1, 0x71, 0x36, 0x88}};
constexpr IID iidReader{0xa4f96ed0, 0xf829, 0x476e, {0x81, 0xc0, 0xcd, 0xc7, 0xbd, 0x2a, 0x08, 0x02}};
constexpr IID iidContentHandler{0x1545cdfa, 0x9e4e, 0x4497, {0xa8, 0xa4, 0x2b, 0xf7, 0xd0, 0x11, 0x2c, 0x44}};

// A lack of memory says nothing about the text.
HRESULT UnlessOutOfMemory(HRESULT result)
{
    if (result == E_OUTOFMEMORY)
    {
        throw std::bad_alloc();
    }
    return result;
}

ComPtr<ISAXXMLReader> CreateReader()
{
    ComPtr<ISAXXMLReader> reader;
    for (const CLSID& clsid : {clsidReader6, clsidReader3})
    {
        if (SUCCEEDED(
                UnlessOutOfMemory(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, iidReader, reader.PutVoid()))))
        {
            break;
        }
    }
    return reader;
}

// What a version does not know is left as it is: document types have been refused before.
void Prepare(ISAXXMLReader& reader)
{
    reader.putFeature(L"http://xml.org/sax/features/namespaces", VARIANT_FALSE);
    reader.putFeature(L"http://xml.org/sax/features/namespace-prefixes", VARIANT_TRUE);
    reader.putFeature(L"prohibit-dtd", VARIANT_TRUE);
}

std::string Narrow(const wchar_t* text, int length)
{
    return text && length > 0 ? windows::FromWide({text, static_cast<std::size_t>(length)}) : std::string();
}

// Passes on what the reader reports. Lives on the stack of `Read`, longer than the reader: it is not counted.
class Handler final : public ISAXContentHandler
{
public:
    explicit Handler(Builder& builder)
        : m_builder(builder)
    {
    }
    ~Handler() = default;
    Handler(const Handler&) = delete;
    Handler& operator=(const Handler&) = delete;

    // What the builder threw: it must not cross the reader.
    [[nodiscard]] const std::exception_ptr& Failure() const noexcept { return m_failure; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override
    {
        const bool known = iid == IID_IUnknown || iid == iidContentHandler;
        *result = known ? static_cast<ISAXContentHandler*>(this) : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE startElement(const wchar_t*, int, const wchar_t*, int, const wchar_t* name, int length,
                                           ISAXAttributes* attributes) override
    {
        return Report(
            [&]
            {
                m_builder.StartElement(Narrow(name, length));
                ReportAttributes(*attributes);
            });
    }
    HRESULT STDMETHODCALLTYPE endElement(const wchar_t*, int, const wchar_t*, int, const wchar_t*, int) override
    {
        return Report([&] { m_builder.EndElement(); });
    }
    HRESULT STDMETHODCALLTYPE characters(const wchar_t* text, int length) override
    {
        return Report([&] { Text({text, static_cast<std::size_t>(length)}); });
    }
    HRESULT STDMETHODCALLTYPE ignorableWhitespace(const wchar_t* text, int length) override
    {
        return characters(text, length);
    }

    HRESULT STDMETHODCALLTYPE putDocumentLocator(ISAXLocator*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE startDocument() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE endDocument() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE startPrefixMapping(const wchar_t*, int, const wchar_t*, int) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE endPrefixMapping(const wchar_t*, int) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE processingInstruction(const wchar_t*, int, const wchar_t*, int) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE skippedEntity(const wchar_t*, int) override { return S_OK; }

private:
    template <class Body>
    HRESULT Report(Body&& body) noexcept
    {
        try
        {
            body();
            return S_OK;
        }
        catch (...)
        {
            m_failure = std::current_exception();
            return E_ABORT;
        }
    }

    void ReportAttributes(ISAXAttributes& attributes)
    {
        int count = 0;
        attributes.getLength(&count);
        for (int index = 0; index < count; ++index)
        {
            const wchar_t* name = nullptr;
            const wchar_t* value = nullptr;
            int nameLength = 0;
            int valueLength = 0;
            UnlessOutOfMemory(attributes.getQName(index, &name, &nameLength));
            UnlessOutOfMemory(attributes.getValue(index, &value, &valueLength));
            m_builder.Attribute(Narrow(name, nameLength), Narrow(value, valueLength));
        }
    }

    // A long text comes in pieces, which may part the two halves of a character beyond U+FFFF.
    void Text(std::wstring_view text)
    {
        std::wstring whole = std::exchange(m_half, {});
        whole += text;
        if (!whole.empty() && IS_HIGH_SURROGATE(whole.back()))
        {
            m_half = whole.back();
            whole.pop_back();
        }
        m_builder.Text(windows::FromWide(whole));
    }

    Builder& m_builder;
    std::wstring m_half;
    std::exception_ptr m_failure;
};

// The XML declaration at the start of a text. It is checked here and kept from the reader, since versions differ over
// encodings and over what they let pass.
class Declaration
{
public:
    explicit Declaration(std::wstring_view text)
        : m_text(text)
    {
    }

    // What stands behind the declaration, from its first "<" on (the reader takes white space in front of it for a
    // sign of another encoding); empty when there is a declaration that is not well-formed.
    [[nodiscard]] std::optional<std::wstring_view> TextBehind()
    {
        if (IsAhead())
        {
            TakeLiteral(opening);
            m_blankBefore = SkipBlanks();
            const bool hasVersion = TakePart(L"version", IsVersion);
            TakePart(L"encoding", IsEncodingName);
            TakePart(L"standalone", IsYesOrNo);
            if (!hasVersion || !m_good || !TakeLiteral(L"?>"))
            {
                return std::nullopt;
            }
        }
        SkipBlanks();
        return IsAhead() ? std::nullopt : std::optional(m_text); // a declaration stands at the very start or nowhere
    }

private:
    // One `name = "value"` with white space before it. False when it is not there, or not as it should be.
    bool TakePart(std::wstring_view name, bool (*isValue)(std::wstring_view))
    {
        if (!m_good || !m_blankBefore || !TakeLiteral(name))
        {
            return false;
        }
        SkipBlanks();
        m_good = TakeLiteral(L"=");
        SkipBlanks();
        const wchar_t quote = m_text.empty() ? L'\0' : m_text.front();
        const auto end = quote == L'"' || quote == L'\'' ? m_text.find(quote, 1) : std::wstring_view::npos;
        m_good = m_good && end != std::wstring_view::npos && isValue(m_text.substr(1, end - 1));
        if (m_good)
        {
            m_text.remove_prefix(end + 1);
            m_blankBefore = SkipBlanks();
        }
        return m_good;
    }

    [[nodiscard]] bool IsAhead() const
    {
        return m_text.starts_with(opening) && m_text.size() > opening.size() &&
               blanks.find(m_text[opening.size()]) != std::wstring_view::npos;
    }

    bool TakeLiteral(std::wstring_view literal)
    {
        const bool found = m_text.starts_with(literal);
        m_text.remove_prefix(found ? literal.size() : 0);
        return found;
    }

    bool SkipBlanks()
    {
        const auto end = m_text.find_first_not_of(blanks);
        const std::size_t count = end == std::wstring_view::npos ? m_text.size() : end;
        m_text.remove_prefix(count);
        return count != 0;
    }

    static bool IsDigit(wchar_t each) { return each >= L'0' && each <= L'9'; }
    static bool IsLetter(wchar_t each) { return (each >= L'A' && each <= L'Z') || (each >= L'a' && each <= L'z'); }

    static bool IsVersion(std::wstring_view value)
    {
        return value.size() > 2 && value.starts_with(L"1.") && std::ranges::all_of(value.substr(2), IsDigit);
    }

    static bool IsEncodingName(std::wstring_view value)
    {
        return !value.empty() && IsLetter(value.front()) &&
               std::ranges::all_of(
                   value, [](wchar_t each)
                   { return IsLetter(each) || IsDigit(each) || each == L'.' || each == L'_' || each == L'-'; });
    }

    static bool IsYesOrNo(std::wstring_view value) { return value == L"yes" || value == L"no"; }

    static constexpr std::wstring_view opening = L"<?xml";
    static constexpr std::wstring_view blanks = L" \t\r\n";

    std::wstring_view m_text;
    bool m_blankBefore = false;
    bool m_good = true;
};

// The text as the reader takes it; empty when its declaration is not well-formed. Of a large text the reader's copy is
// the only wide one left.
std::optional<Variant> ReaderInput(std::string_view text)
{
    const std::wstring wide = windows::ToWide(text);
    const std::optional<std::wstring_view> content = Declaration(wide).TextBehind();
    return content ? std::optional(Variant::Text(*content)) : std::nullopt;
}

} // namespace

bool Read(std::string_view text, Builder& builder)
{
    if (!windows::IsUtf8(text))
    {
        return false;
    }
    const std::optional<Variant> input = ReaderInput(text);
    Handler handler(builder); // before the reader, which refers to it
    const ComPtr<ISAXXMLReader> reader = CreateReader();
    if (!input || !reader)
    {
        return false;
    }
    Prepare(*reader);
    UnlessOutOfMemory(reader->putContentHandler(&handler));
    const HRESULT result = reader->parse(input->Get());
    if (handler.Failure())
    {
        std::rethrow_exception(handler.Failure());
    }
    return SUCCEEDED(UnlessOutOfMemory(result));
}

} // namespace vellumo::xml
