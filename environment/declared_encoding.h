// The bytes of an XML file as text. Files of the region come in UTF-8 or in one of the 8-bit sets of western Europe,
// and say so in their first line.
#pragma once

#include <optional>
#include <string>

namespace vellumo::environment
{

// UTF-8 by the byte order mark or the encoding that the XML declaration names; without either it is UTF-8. Known are
// UTF-8, UTF-16 (with a byte order mark), US-ASCII, ISO-8859-1 and Windows-1252, of which ISO-8859-1 is taken for the
// latter. Empty for any other, which cannot be read. Faults only for lack of memory; UTF-8 takes none beside `bytes`.
[[nodiscard]] std::optional<std::string> DecodeXml(std::string bytes);

} // namespace vellumo::environment
