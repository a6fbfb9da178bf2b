// The XML declaration at the start of a text. It is checked here and kept from the engines, which differ over
// encodings, over versions and over what they let pass.
#pragma once

#include <optional>
#include <string_view>

namespace vellumo::xml
{

// What stands behind the declaration, from its first character on that is no blank: some engines take white space at
// the start for a sign of another encoding. Without a declaration it is all of the text; empty when there is one that
// is not well-formed, or does not stand at the very start. An encoding that it names is any that could be one.
[[nodiscard]] std::optional<std::string_view> TextBehindDeclaration(std::string_view text);

} // namespace vellumo::xml
