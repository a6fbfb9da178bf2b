// The part that the platform supplies: reading a text. The engine decides what is well-formed; it reports elements,
// attributes and texts in document order to a `Builder`, which makes the tree that all selecting and writing works
// on, so that a document behaves the same whatever engine read it.
#pragma once

#include <string>
#include <string_view>

namespace vellumo::xml
{

class Builder
{
public:
    virtual ~Builder() = default;

    // Names are the literal prefixed spellings; namespace declarations are attributes like any other ("xmlns:m").
    virtual void StartElement(std::string_view name) = 0;
    virtual void Attribute(std::string_view name, std::string_view value) = 0;
    virtual void Text(std::string_view text) = 0;
    virtual void EndElement() = 0;
};

// Defined by the platform. `text` is UTF-8 without byte order mark and XML declaration, begins with no blank, has no
// document type declaration and keeps the limits. False when it is not well-formed; what the builder has been told by
// then is to be thrown away. Never throws but for lack of memory, which is not to be taken for a fault of the text.
[[nodiscard]] bool Read(std::string_view text, Builder& builder);

} // namespace vellumo::xml
