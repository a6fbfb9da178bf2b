// What the library tells support staff: one line for one cause, in the host's journal of service errors and in the
// folder of traces. A line says what, why, and whom by identifier; names and what a server quotes stay out.
//
// Nothing here faults: a line that cannot be written must not stop the work that it tells about.
#pragma once

#include "host/host_services.h"
#include "host/traces.h"
#include "host/value.h"

#include <exception>
#include <memory>
#include <string>
#include <string_view>

namespace vellumo::service
{

// With which a line begins that somebody must act on; hosts find it by that.
inline constexpr std::string_view toCheck = "DA CONTROLLARE: ";

class Journal
{
public:
    // Both outlive the journal.
    Journal(const host::HostServices& services, host::Traces& traces);

    enum class Urgency
    {
        Note,
        ToCheck
    };

    // True when the host's journal has the line. Of a longer one the first 1,999 characters
    // and "…" are written; line breaks become blanks.
    bool Write(Urgency urgency, std::string_view line) noexcept;
    bool Write(std::string_view line) noexcept { return Write(Urgency::Note, line); }
    bool WriteToCheck(std::string_view line) noexcept { return Write(Urgency::ToCheck, line); }

    // Keeps a code in the folder of traces until it is settled. Null when the folder does not take it: once for each
    // journal a line says so, since the code is lost if the program ends.
    [[nodiscard]] std::shared_ptr<host::OpenCodeEntry> Keep(const host::OpenCode& code) noexcept;

private:
    void TellOfFolder() noexcept;
    [[nodiscard]] bool WriteToHost(const std::string& line) const noexcept;

    const host::HostServices& m_services;
    host::Traces& m_traces;
    bool m_toldOfFolder = false;
};

// Why an operation failed, for a line: number, source and text of the fault. Values in quotation marks or brackets
// become "…", since servers quote data in their messages.
[[nodiscard]] std::string WhyOf(const std::exception& fault);

// An identifier that the host gave, for a line; "sconosciuto" for anything but a whole number.
[[nodiscard]] std::string IdentifierText(const host::Value& identifier);

enum class Parentheses
{
    Replaced,
    Kept // where they hold codes, as in the library's own lines
};

// `text` with what stands in quotation marks or brackets replaced.
[[nodiscard]] std::string WithoutQuotedValues(std::string_view text, Parentheses parentheses = Parentheses::Replaced);

} // namespace vellumo::service
