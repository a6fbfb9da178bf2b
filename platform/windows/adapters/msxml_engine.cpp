// Reads XML with MSXML's SAX reader: it reports what it finds as it goes, so there is no document of its own to walk
// or to free, and it can be told to leave namespaces alone, which its DOM cannot.
//
// The text goes in as a BSTR, broken into lines.
#include "xml/engine.h"

#include "platform/windows/adapters/variant.h"
#include "platform/windows/system/com_ptr.h"
#include "platform/windows/system/text.h"
#include "xml/line_breaks.h"

#include <msxml2.h>

#include <exception>
#include <new>
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

} // namespace

bool Read(std::string_view text, Builder& builder)
{
    if (!windows::IsUtf8(text))
    {
        return false;
    }
    const Variant input = Variant::Text(windows::ToWide(WithLineBreaks(text)));
    Handler handler(builder); // before the reader, which refers to it
    const ComPtr<ISAXXMLReader> reader = CreateReader();
    if (!reader)
    {
        return false;
    }
    Prepare(*reader);
    UnlessOutOfMemory(reader->putContentHandler(&handler));
    const HRESULT result = reader->parse(input.Get());
    if (handler.Failure())
    {
        std::rethrow_exception(handler.Failure());
    }
    return SUCCEEDED(UnlessOutOfMemory(result));
}

} // namespace vellumo::xml
