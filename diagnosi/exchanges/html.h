// Text on its way into an HTML page.
#pragma once

#include <string>
#include <string_view>

namespace vellumo::diagnosi
{

// For element content and quoted attribute values, whatever `text` (UTF-8) holds: markup becomes text, and what would
// not be seen or would turn the direction of writing is shown by a symbol or its number.
[[nodiscard]] std::string Escaped(std::string_view text);

// <name class="style">text</name>; without a class when `style` is "".
[[nodiscard]] std::string TextElement(std::string_view name, std::string_view style, std::string_view text);

} // namespace vellumo::diagnosi
