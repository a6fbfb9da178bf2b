// The look at a text before an engine sees it. Engines differ in what they refuse and in how badly they take a
// hostile text; this makes every engine refuse the same ones.
#pragma once

#include "xml/document.h"

#include <string_view>

namespace vellumo::xml
{

// False for a text with a document type declaration, beyond the limits, with anything but blanks outside its root
// element and comments (as a second byte order mark), with a prefix that no element around it declares (some engines
// refuse that, others silently drop the prefix), or with a colon where namespaces have none. Says nothing else about
// being well-formed.
[[nodiscard]] bool IsAcceptable(std::string_view text, const Limits& limits);

} // namespace vellumo::xml
