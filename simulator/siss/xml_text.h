// The little XML that the simulated network needs: writing its replies, and reading by path what was sent to it. It is
// no parser for strangers' texts; a request that it cannot read is a fault of the library, and said so.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vellumo::siss
{

[[nodiscard]] std::string Escape(std::string_view text);

class Element
{
public:
    std::string name; // literal prefixed spelling
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<Element> children;
    std::string text; // exactly as sent; "" where there are children

    // "a/b", "a/@x"; empty when there is no such node. With several of one name the first counts; "a[2]" is the second.
    [[nodiscard]] std::optional<std::string> TextAt(std::string_view path) const;
    [[nodiscard]] const Element* Find(std::string_view path) const;
};

// Faults with what is wrong when the text is not well-formed.
[[nodiscard]] Element ReadXml(std::string_view text);

// "SOAP-ENV" and "m" declared, as in the real network's replies.
[[nodiscard]] std::string Envelope(std::string_view body, std::string_view prefix = "SOAP-ENV");

} // namespace vellumo::siss
