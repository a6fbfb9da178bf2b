// Dates as SISS writes them, in its messages and in the regional tables.
#pragma once

#include "host/date.h"
#include "host/value.h"

#include <optional>
#include <string>
#include <string_view>

namespace vellumo::environment
{

// Reads what SISS services are known to send: yyyymmdd, yyyymmddhhmm, yyyymmddhhmmss; yyyy-mm-dd, yyyy/mm/dd,
// dd/mm/yyyy, dd-mm-yyyy, dd.mm.yyyy, these optionally followed by "T" or a blank and a time hh:mm[:ss[.f]], and with
// or without a time by a zone (Z, +hh, +hhmm, +hh:mm), which is ignored. Blanks around are ignored. "", all zeros,
// impossible dates and anything else give the zero date. Never faults.
[[nodiscard]] host::Date ConvertSissDateTime(std::string_view text) noexcept;

// The day in a column of the host, which keeps dates as dates, as OLE numbers or as text in one of those forms. What is
// no date gives the zero date.
[[nodiscard]] host::Date StoredDate(const host::Value& value);

// The same for a date that goes out: a text that is there and cannot be read faults, since without it the message would
// say that there is no date. Blanks and zeros are no date.
[[nodiscard]] host::Date ReadableDate(const host::Value& value);

// "yyyy-MM-dd hh.mm.ss", 24-hour clock: the names of the library's own files and folders, sorted as they were made.
[[nodiscard]] std::string Stamp(host::Date time);
// Its time; empty for any other text, however like one it looks.
[[nodiscard]] std::optional<host::Date> TimeOfStamp(std::string_view text);

} // namespace vellumo::environment
